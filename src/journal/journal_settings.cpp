#include "journal/journal_settings.h"

#include "journal/json_members.h"
#include "transfer/pin_layer.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace bitlux {

namespace {

/// The pins of the bits of the status register; those of the first three are in no status register.
constexpr std::array<std::string_view, 8> statusPins{"1", "14", "16", "15", "13", "12", "10", "11"};
constexpr std::array<std::string_view, 4> clockNames{"4M", "1M", "500k", "62.5k"};
constexpr std::int16_t clockStep = 64; ///< between the codes of two clocks

const char* levelName(bool high) {
    return high ? "high" : "low";
}

/// CS, DI, CLK, DO as numbers on the connector.
std::string pinText(const std::array<std::int16_t, 4>& pins) {
    constexpr int firstDataPin = 2;
    return fmt::format("{},{},{},{}", pins[0] + firstDataPin, pins[1] + firstDataPin,
                       pins[2] + firstDataPin, statusPins.at(static_cast<std::size_t>(pins[3])));
}

std::array<std::int16_t, 4> pinNumbersFrom(std::string_view text) {
    std::array<std::int16_t, 4> pins{};
    std::string_view rest = text;
    for (std::int16_t& pin : pins) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        pin = ConvertPin(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (pinText(pins) != text)
        refuseMember("pins", "has no pins of the connector");
    return pins;
}

std::int16_t clockFrom(const std::string& text) {
    const auto* const found = std::find(clockNames.begin(), clockNames.end(), text);
    if (found == clockNames.end())
        refuseMember("clock", "is none of 4M, 1M, 500k and 62.5k");
    return static_cast<std::int16_t>((found - clockNames.begin()) * clockStep);
}

std::uint8_t byteMember(const Json& object, const char* name) {
    return static_cast<std::uint8_t>(
        numberMember(object, name, 0, std::numeric_limits<std::uint8_t>::max()));
}

void setLevels(std::int16_t& one, std::int16_t& zero, bool high) {
    one = high ? ConstHigh : ConstLow;
    zero = high ? ConstLow : ConstHigh;
}

} // namespace

JournalSettings JournalSettings::of(const Session& session, bool onDongle) {
    JournalSettings now{.onDongle = onDongle,
                        .bits = session.SPIWordLength,
                        .type = session.SPIType,
                        .msbFirst = session.MSBFirst == ConstOn,
                        .csHigh = session.CSAssertLevel == ConstHigh,
                        .diHigh = session.DIOneLevel == ConstHigh,
                        .doHigh = session.DOHighValue == 1};
    if (!onDongle) {
        now.pins = {session.CSPin, session.DIPin, session.ClockPin, session.DOPin};
        now.data = session.DataPortPins.value();
        now.control = session.ControlPortPins.value();
        return now;
    }
    now.clock = session.SPIBaudRate;
    now.donglePins0 = session.USBExtraPins0;
    now.donglePins1 = session.USBExtraPins1;
    if (session.ZT72537PanelActive == 1)
        now.lastByte = session.ZT72537FrameByte7;
    return now;
}

void JournalSettings::applyTo(Session& session) const {
    session.SPIWordLength = bits;
    session.SPIType = type;
    session.MSBFirst = msbFirst ? ConstOn : ConstOff;
    setLevels(session.CSAssertLevel, session.CSIdleLevel, csHigh);
    setLevels(session.DIOneLevel, session.DIZeroLevel, diHigh);
    session.DOHighValue = doHigh ? 1 : 0;
    session.DOLowValue = doHigh ? 0 : 1;
    if (!onDongle) {
        session.CSPin = pins[0];
        session.DIPin = pins[1];
        session.ClockPin = pins[2];
        session.DOPin = pins[3];
        session.DataPortPins.setValue(data);
        session.ControlPortPins.setValue(control);
        return;
    }
    session.SPIBaudRate = clock;
    session.USBExtraPins0 = donglePins0;
    session.USBExtraPins1 = donglePins1;
    session.ZT72537PanelActive = lastByte ? 1 : 0;
    session.ZT72537FrameByte7 = lastByte.value_or(0);
}

bool JournalSettings::isLike(JournalSettings other) const {
    std::uint8_t lines = 0;
    for (const std::size_t line : {0U, 1U, 2U})
        lines = static_cast<std::uint8_t>(lines | 1U << static_cast<unsigned>(pins[line]));
    if (((data ^ other.data) & ~lines) != 0)
        return false;
    other.data = data;
    return *this == other;
}

void JournalSettings::addTo(Json& object) const {
    object["bus"] = onDongle ? "dongle" : "port";
    object["bits"] = bits;
    object["type"] = type;
    object["order"] = msbFirst ? "msb" : "lsb";
    object["cs"] = levelName(csHigh);
    object["di"] = levelName(diHigh);
    object["do"] = levelName(doHigh);
    if (!onDongle) {
        object["pins"] = pinText(pins);
        object["data_register"] = data;
        object["control_register"] = control;
        return;
    }
    object["clock"] =
        clockNames.at(static_cast<std::size_t>(clock / clockStep) % clockNames.size());
    object["dongle_pins"] = donglePins0 | donglePins1 << 8;
    if (lastByte)
        object["last_byte"] = *lastByte;
}

JournalSettings JournalSettings::from(const Json& object) {
    constexpr int longest = 160;
    constexpr int types = 8;
    constexpr std::int64_t mostDonglePins = 0x1FF;
    JournalSettings read{.onDongle = choiceMember(object, "bus", "dongle", "port"),
                         .bits =
                             static_cast<std::int16_t>(numberMember(object, "bits", 1, longest)),
                         .type = static_cast<std::int16_t>(numberMember(object, "type", 1, types)),
                         .msbFirst = choiceMember(object, "order", "msb", "lsb"),
                         .csHigh = choiceMember(object, "cs", "high", "low"),
                         .diHigh = choiceMember(object, "di", "high", "low"),
                         .doHigh = choiceMember(object, "do", "high", "low")};
    if (!read.onDongle) {
        read.pins = pinNumbersFrom(textMember(object, "pins"));
        read.data = byteMember(object, "data_register");
        read.control = byteMember(object, "control_register");
        return read;
    }
    read.clock = clockFrom(textMember(object, "clock"));
    const std::int64_t donglePins = numberMember(object, "dongle_pins", 0, mostDonglePins);
    read.donglePins0 = static_cast<std::uint8_t>(donglePins & 0xFF);
    read.donglePins1 = static_cast<std::uint8_t>(donglePins >> 8);
    if (object.contains("last_byte"))
        read.lastByte = byteMember(object, "last_byte");
    return read;
}

} // namespace bitlux
