#include "panels/common/panel_words.h"

#include "panels/common/hex_value.h"
#include "platform/conversions.h"
#include "session/flag.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::size_t bitsOfByte = 8;

int digitsFor(int bits) {
    return (bits + bitsOfDigit - 1) / bitsOfDigit;
}

} // namespace

/// While it exists, the session has the shape of the chip's words. Then the previous shape is
/// restored.
class PanelWords::Shape {
public:
    Shape(Session& session, const chips::WordFormat& format, std::int16_t type)
        : session_(session),
          length_(session.SPIWordLength),
          type_(session.SPIType),
          order_(session.MSBFirst),
          bits_(static_cast<std::int16_t>(format.bits)) {
        if (length_ != bits_)
            word_ = session.WordToSend;
        session.SPIWordLength = bits_;
        session.SPIType = type;
        session.MSBFirst = ConstOn;
    }
    ~Shape() {
        session_.SPIWordLength = length_;
        session_.SPIType = type_;
        session_.MSBFirst = order_;
        if (length_ != bits_)
            session_.WordToSend = std::move(word_);
    }
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;

private:
    Session& session_;
    std::int16_t length_;
    std::int16_t type_;
    Flag order_;
    std::int16_t bits_;
    std::vector<std::int16_t> word_;
};

bool PanelWords::sendable() {
    const bool good = hasOrder();
    if (!good && !std::exchange(refused_, true))
        boxes_.show({.text = "The words of this chip need the most significant bit first. "
                             "Nothing was sent."});
    refused_ = refused_ && !good;
    return good;
}

bool PanelWords::send(std::uint64_t word, std::optional<std::int16_t> type) {
    if (!sendable()) {
        session_.WordReceived.assign(static_cast<std::size_t>(format_.bits), 0);
        return false;
    }
    if (travel_ == Travel::InShapeOfSession) {
        starting();
        fill(word);
        sendFilled();
        return true;
    }
    {
        const std::int16_t own =
            travel_ == Travel::InTypeOfSession ? session_.SPIType : format_.type;
        const Shape shape(session_, format_, type.value_or(own));
        fill(word);
        engine_.SendSPI();
    }
    exchanged.raise(word);
    return true;
}

void PanelWords::sendFilled() {
    std::uint64_t word = 0;
    const std::vector<std::int16_t>& elements = session_.WordToSend;
    for (std::size_t i = 0; i < std::min(elements.size(), static_cast<std::size_t>(format_.bits));
         ++i)
        word |= std::uint64_t{elements[i] == 1 ? 1U : 0U} << i;
    engine_.SendSPI();
    exchanged.raise(word);
}

void PanelWords::fill(std::uint64_t word) {
    std::vector<std::int16_t>& elements = session_.WordToSend;
    elements.assign(static_cast<std::size_t>(std::max<int>(format_.bits, session_.SPIWordLength)),
                    0); // bits of another word must not mix in
    const auto bits = static_cast<std::size_t>(format_.bits);
    if (format_.packed)
        for (std::size_t low = 0; low < bits; low += bitsOfByte)
            elements[low] = static_cast<std::int16_t>(word >> low & 0xFF);
    else
        for (std::size_t i = 0; i < bits; ++i)
            elements[i] = static_cast<std::int16_t>(word >> i & 1);
}

std::uint64_t PanelWords::answer() const {
    const std::size_t bits =
        std::min(session_.WordReceived.size(), static_cast<std::size_t>(format_.bits));
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < bits; ++i)
        word |= std::uint64_t{session_.WordReceived[i] == 1 ? 1U : 0U} << i;
    return word;
}

std::uint8_t PanelWords::answerByte(int low) const {
    return static_cast<std::uint8_t>(answer() >> low);
}

bool PanelWords::sendAdjusted(Purpose purpose, const chips::Register* target, std::uint64_t word) {
    return send(adjust ? adjust(purpose, target, word) : word);
}

void PanelWords::reportStatus(Purpose purpose) {
    static const chips::BitList none;
    const bool inPart = purpose == Purpose::Read && !format_.statusOfRead.empty();
    answered(inPart ? format_.statusOfRead : none);
}

void PanelWords::put(const chips::Register& target, std::uint64_t data) {
    sendAdjusted(Purpose::Write, &target, wordOf(target, data));
    reportStatus(Purpose::Write);
}

std::uint64_t PanelWords::fetch(const chips::View& view) {
    sendAdjusted(Purpose::Read, nullptr, wordOf(view));
    if (format_.answersNext)
        sendAdjusted(Purpose::Read, nullptr, format_.fetch.value_or(wordOf(view)));
    reportStatus(Purpose::Read);
    return format_.data.taken(answer());
}

void PanelWords::write(const chips::Register& target, std::uint64_t data) {
    put(target, data);
    wasWritten(target);
    if (target.writeLine.exists())
        sent(target.writeLine, hex(data));
}

std::uint64_t PanelWords::read(const chips::View& view) {
    const std::uint64_t value = fetch(view);
    wasRead(view);
    if (view.line.exists())
        sent(view.line, view.line.value);
    return value;
}

void PanelWords::command(const chips::Command& command) {
    sendAdjusted(Purpose::Command, nullptr, command.word.value_or(0));
    reportStatus(Purpose::Command);
    if (command.line.exists())
        sent(command.line, command.line.value);
}

std::uint64_t PanelWords::wordOf(const chips::Register& target, std::uint64_t data) const {
    return format_.word(chips::Operation::Write, target.address,
                        (data & ~target.neverWritten) | target.alwaysWritten);
}

std::uint64_t PanelWords::wordOf(const chips::View& view) const {
    return format_.word(view.operation, view.address, view.extra);
}

std::string PanelWords::text(std::uint64_t word) const {
    return fmt::format("0x{:0{}X}", word, digitsFor(format_.bits));
}

std::string PanelWords::text(const chips::Register& target) const {
    std::string text = this->text(wordOf(target, 0));
    const int low = format_.data.empty() ? 0 : format_.data.at(0);
    const auto last = static_cast<std::size_t>(low / bitsOfDigit);
    const auto digits = static_cast<std::size_t>(digitsFor(low % bitsOfDigit + target.width()));
    if (last + digits <= text.size())
        text.replace(text.size() - last - digits, digits, digits, 'x');
    return text;
}

} // namespace bitlux
