#include "panels/zt72518/line_commands.h"

#include "panels/common/binary_text.h"
#include "panels/common/hex_value.h"
#include "panels/zt72518/special_mode_page.h"
#include "platform/conversions.h"
#include "platform/failure.h"

#include <array>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr const char* initMiscLine = "Init Misc Write";
constexpr const char* specialModeLine = "Special Mode";
constexpr std::uint8_t specialModeRead = 0x12; ///< high bytes
constexpr std::uint8_t specialModeWrite = 0x52;
constexpr int parityOption = 6; ///< bit of Init Misc

constexpr std::array<std::pair<std::string_view, int>, 5> watchdogCommands{
    {{"Start Watchdog", 0},
     {"Stop Watchdog", 2},
     {"Start Watchdog Current", 4},
     {"Stop Watchdog Current", 6},
     {"One Simple Watchdog", 12}}};

std::uint8_t byteIn(const std::string& value) {
    return static_cast<std::uint8_t>(hexValue(value, 8));
}

std::string answerText(std::uint8_t byte) {
    const std::string digits = hex(byte);
    return fmt::format("{}{}  ({})", byte < 16 ? " 0000 " : "", HEXtoBIN(digits), digits);
}

} // namespace

LineCommands::LineCommands(const PanelContext& context)
    : form_(context.form),
      sequence_(context.sequence),
      chip_(context.chip),
      words_(context.part<ChipWords>()),
      watchdog_(context.part<Watchdog>()) {
    sequence_.player.setCommands(*this);
    form_.variable("SequenceHighByte", SequenceHighByte);
    form_.variable("SequenceIsWrite", SequenceIsWrite);
    form_.variable("SequenceIsWatchdog", SequenceIsWatchdog);
    form_.procedure("Decod_Name", [this](const std::string& name) { Decod_Name(name); });
}

std::vector<std::string> LineCommands::play(int line, const std::string& name,
                                            const std::string& value) {
    if (name == initMiscLine)
        words_.SPIParityEnabled = ((byteIn(value) >> parityOption) & 1) != 0;
    if (name == specialModeLine) {
        enterSpecialMode(byteIn(value));
        return {};
    }
    if (const std::optional<int> mode = Watchdog::modeNumber(name)) {
        watchdog_.startBySequence(*mode, line);
        return {};
    }
    return send(name, value);
}

void LineCommands::enterSpecialMode(std::uint8_t choice) {
    if (choice > 3)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("There is no Special Mode {}", choice));
    words_.send(static_cast<std::uint8_t>(specialModeRead + words_.ReadBit), 0);
    if (!sequence_.variables.RunEnabled) // the panel was closed while a message box was open
        return;
    constexpr unsigned allRandomBits = (1U << SpecialModePage::randomBits) - 1;
    const unsigned inverse = allRandomBits & ~static_cast<unsigned>(words_.replyLow());
    const unsigned data = (unsigned{choice} << SpecialModePage::randomBits) + inverse;
    words_.send(specialModeWrite, static_cast<std::uint8_t>(data));
}

std::vector<std::string> LineCommands::send(const std::string& name, const std::string& value) {
    Decod_Name(name);
    if (SequenceIsWatchdog)
        return {};
    words_.WordLowByte = byteIn(value);
    // Computed as for a write by button; the words of a run have none.
    if (SequenceIsWrite && words_.SPIParityEnabled)
        words_.ParityOfWordLow(words_.WordLowByte);
    words_.send(SequenceHighByte, words_.WordLowByte);
    return {answerText(words_.replyHigh()), answerText(words_.replyLow())};
}

void LineCommands::Decod_Name(std::string_view name) {
    SequenceHighByte = 0;
    SequenceIsWrite = false;
    SequenceIsWatchdog = false;
    for (const auto& [command, button] : watchdogCommands)
        if (command == name) {
            SequenceIsWatchdog = true;
            form_.call("watchdog_Click", button);
            return;
        }
    const LineMeaning* meaning = sequence_.index().find(name);
    if (meaning == nullptr)
        return;
    SequenceIsWrite = meaning->written != nullptr;
    const int readBit = SequenceIsWrite ? 0 : words_.ReadBit;
    SequenceHighByte = static_cast<std::uint8_t>(static_cast<int>(highByteOf(*meaning)) + readBit);
}

/// Without parity or read bit.
unsigned LineCommands::highByteOf(const LineMeaning& meaning) const {
    const chips::WordFormat& format = chip_.word;
    const std::uint64_t word =
        meaning.written != nullptr
            ? format.word(chips::Operation::Write, meaning.written->address, 0)
            : format.word(meaning.read->operation,
                          meaning.line->address.value_or(meaning.read->address), 0) -
                  format.read;
    return static_cast<unsigned>(word >> 8);
}

} // namespace bitlux::zt72518
