#include "bench/dongle_fault.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/time_units.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

[[noreturn]] void refuse(std::string_view text) {
    throw Failure(Failure::Kind::Conversion,
                  fmt::format("\"{}\" is no fault: say silent, late:MS, short:BYTES, stalled, "
                              "babbling, gone or gone:MS, and where wanted @FRAME and /CHANCE; "
                              "or busy",
                              text));
}

/// Cuts what follows `mark` off the text; empty when the mark is not there.
std::string_view cutFrom(std::string_view& text, char mark) {
    const std::size_t at = text.find(mark);
    if (at == std::string_view::npos)
        return {};
    const std::string_view tail = text.substr(at + 1);
    text = text.substr(0, at);
    return tail.empty() ? std::string_view("?") : tail;
}

template <typename Number>
bool readNumber(std::string_view text, Number& number, Number least, Number most) {
    const std::optional<Number> read = wholeNumber<Number>(text);
    number = read.value_or(number);
    return read && number >= least && number <= most;
}

/// Reads the kind and its value; false when they do not go together.
bool readKind(std::string_view kind, std::string_view value, DongleFault& fault) {
    const auto duration = [&](std::int64_t least) {
        constexpr std::int64_t longest = 86'400'000;
        if (!readNumber(value, fault.duration, least, longest))
            return false;
        fault.duration *= millisecond;
        return true;
    };
    constexpr std::array plain{std::pair{"silent", DongleFault::Kind::Silent},
                               std::pair{"stalled", DongleFault::Kind::Stalled},
                               std::pair{"babbling", DongleFault::Kind::Babbling}};
    for (const auto& [name, plainKind] : plain)
        if (kind == name) {
            fault.kind = plainKind;
            return value.empty();
        }
    if (kind == "late") {
        fault.kind = DongleFault::Kind::Late;
        return duration(0);
    }
    if (kind == "short") {
        fault.kind = DongleFault::Kind::Short;
        return readNumber(value, fault.bytes, 0, 7);
    }
    fault.kind = DongleFault::Kind::Gone;
    return kind == "gone" && (value.empty() || duration(1));
}

} // namespace

DongleFault dongleFaultFrom(std::string_view text) {
    std::string_view rest = text;
    DongleFault fault;
    if (text == "busy") {
        fault.kind = DongleFault::Kind::Busy;
        return fault;
    }
    const std::string_view chance = cutFrom(rest, '/');
    const std::string_view frame = cutFrom(rest, '@');
    const std::string_view value = cutFrom(rest, ':');
    constexpr int mostFrames = 1'000'000'000;
    if ((!chance.empty() && !readNumber(chance, fault.chance, 0.0, 1.0)) ||
        (!frame.empty() && !readNumber(frame, fault.frame, 1, mostFrames)) ||
        !readKind(rest, value, fault))
        refuse(text);
    return fault;
}

DongleFaults::DongleFaults(std::vector<DongleFault> faults, std::uint32_t seed)
    : faults_(std::move(faults)),
      random_(seed),
      refusesOpening_(std::erase_if(faults_, [](const DongleFault& fault) {
                          return fault.kind == DongleFault::Kind::Busy;
                      }) > 0) {}

DongleFault DongleFaults::next() {
    ++frames_;
    for (const DongleFault& fault : faults_) {
        if (fault.frame != 0 && fault.frame != frames_)
            continue;
        // Not std::bernoulli_distribution: its results differ from library to library.
        if (static_cast<double>(random_()) < fault.chance * 4294967296.0)
            return fault;
    }
    return {};
}

} // namespace bitlux
