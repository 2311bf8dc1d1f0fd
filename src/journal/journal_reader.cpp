#include "journal/journal_reader.h"

#include "journal/json_members.h"
#include "platform/conversions.h"
#include "platform/printable.h"
#include "platform/time_units.h"
#include "sending/word_text.h"

#include <fstream>
#include <limits>

namespace bitlux {

namespace {

constexpr std::size_t longestInMessage = 60;
constexpr std::int64_t mostMicroseconds =
    std::numeric_limits<std::int64_t>::max() / (4 * microsecond);

bool hasWholeLastLine(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    file.seekg(-1, std::ios::end);
    return file.get() == '\n';
}

bool flagMember(const Json& object, const char* name) {
    const auto found = object.find(name);
    if (found == object.end())
        return false;
    if (!found->is_boolean())
        refuseMember(name, "is neither true nor false");
    return found->get<bool>();
}

UsbFrame frameFrom(const Json& value, const char* name) {
    if (!value.is_string())
        refuseMember(name, "is no text");
    const auto& text = value.get_ref<const std::string&>();
    constexpr std::size_t step = 3; ///< from byte to byte
    UsbFrame frame{};
    for (std::size_t i = 0; i < frame.size() && i * step + 1 < text.size(); ++i) {
        const int high = hexDigit(text[i * step]);
        const int low = hexDigit(text[i * step + 1]);
        frame[i] = static_cast<std::uint8_t>((high << 4 | low) & 0xFF);
    }
    if (frameText(frame) != text)
        refuseMember(name, "is no frame of 8 bytes");
    return frame;
}

JournalCommand commandFrom(const Json& object) {
    JournalCommand command{.frame = frameFrom(member(object, "frame"), "frame"), .answer = {}};
    if (const Json& answer = member(object, "answer"); !answer.is_null())
        command.answer = frameFrom(answer, "answer");
    return command;
}

JournalPins journalPinsFrom(const Json& object) {
    constexpr int mostData = 0xFF;
    constexpr int mostControl = 0xF;
    const bool isData = choiceMember(object, "register", "data", "control");
    return {.pinRegister = isData ? PinRegister::Data : PinRegister::Control,
            .value = static_cast<std::uint8_t>(
                numberMember(object, "value", 0, isData ? mostData : mostControl))};
}

void demandHeader(const Json& object) {
    if (textMember(object, "kind") != "journal")
        throw Failure(Failure::Kind::Conversion, "a journal begins with the kind \"journal\"");
    const std::int64_t version =
        numberMember(object, "version", 1, std::numeric_limits<std::int32_t>::max());
    if (version > journalVersion)
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("it is of version {}, and this program reads up to {}", version,
                                  journalVersion));
}

} // namespace

JournalReader::JournalReader(const std::string& fileName)
    : lines_(fileName), endsWithLine_(hasWholeLastLine(fileName)) {}

std::optional<JournalEntry> JournalReader::next() {
    const std::optional<std::string_view> line = lines_.next();
    if (!line) {
        if (!bits_)
            throw Failure(
                Failure::Kind::Conversion,
                fmt::format("The file \"{}\" is no journal: it has no line.", lines_.fileName()));
        return std::nullopt;
    }
    const std::string text(*line);
    const std::size_t number = lines_.lineNumber();
    try {
        JournalEntry entry = entryFrom(text);
        entry.line = number;
        return entry;
    } catch (const Failure& failure) {
        if (bits_ && !endsWithLine_ && !lines_.next()) {
            isCutOff_ = true;
            return std::nullopt;
        }
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("The file \"{}\" is damaged in line {}: {}.", lines_.fileName(),
                                  number, failure.what()));
    }
}

JournalEntry JournalReader::entryFrom(std::string_view line) {
    const Json object = Json::parse(line, nullptr, false);
    if (!object.is_object())
        throw Failure(Failure::Kind::Conversion, "it is no object of JSON");
    const std::string& kind = textMember(object, "kind");
    if (!bits_) {
        demandHeader(object);
        const JournalSettings settings = JournalSettings::from(object);
        bits_ = settings.bits;
        return {.content = settings};
    }
    JournalEntry entry;
    entry.begin = numberMember(object, "us", 0, mostMicroseconds) * microsecond;
    if (kind == "word" || kind == "command")
        entry.duration = numberMember(object, "took", 0, mostMicroseconds) * microsecond;
    if (kind == "word") {
        entry.content = wordFrom(object);
    } else if (kind == "settings") {
        const JournalSettings settings = JournalSettings::from(object);
        bits_ = settings.bits;
        entry.content = settings;
    } else if (kind == "pins") {
        entry.content = journalPinsFrom(object);
    } else if (kind == "command") {
        entry.content = commandFrom(object);
    } else if (kind == "wait" || kind == "box" || kind == "dongle" || kind == "remark") {
        entry.content = JournalRemark{};
    } else {
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("there is no kind \"{}\"", printable(kind, longestInMessage)));
    }
    return entry;
}

JournalWord JournalReader::wordFrom(const Json& object) const {
    JournalWord word{.sent = digits(member(object, "sent"), "sent"),
                     .received = {},
                     .updatesPins = flagMember(object, "updates_pins"),
                     .topBit = flagMember(object, "top_bit")};
    if (const Json& received = member(object, "received"); !received.is_null())
        word.received = digits(received, "received");
    return word;
}

/// Upper-case digits, as many as the word needs.
std::string JournalReader::digits(const Json& value, const char* name) const {
    if (!value.is_string())
        refuseMember(name, "is no text");
    const auto& text = value.get_ref<const std::string&>();
    const auto length = static_cast<std::size_t>(*bits_);
    bool isGood = text.size() == static_cast<std::size_t>(hexDigits(*bits_));
    for (const char c : text)
        isGood = isGood && ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'));
    if (isGood && length % 4 != 0)
        isGood = hexDigit(text.front()) < 1 << length % 4;
    if (!isGood)
        refuseMember(name, fmt::format("is no word of {} bits", *bits_).c_str());
    return text;
}

JournalSurvey surveyJournal(const std::string& fileName) {
    JournalReader reader(fileName);
    JournalSurvey survey;
    for (auto entry = reader.next(); entry; entry = reader.next()) {
        const auto* settings = std::get_if<JournalSettings>(&entry->content);
        if (settings == nullptr)
            continue;
        if (entry->line == 1)
            survey.settings = *settings;
        survey.usesDongle = survey.usesDongle || settings->onDongle;
    }
    survey.isCutOff = reader.isCutOff();
    return survey;
}

} // namespace bitlux
