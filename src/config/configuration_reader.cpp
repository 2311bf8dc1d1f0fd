#include "config/configuration_reader.h"

#include "config/recovered_origin.h"
#include "platform/code_page.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <stdexcept>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::string_view firstKeyOfVersion2 = "Bitlux Forge Configuration File";
constexpr std::string_view firstKeyOfVersion3 = "Bitlux Configuration File (Version 3.x.x)";
constexpr std::size_t longestReason = 300;
constexpr std::string_view quickCommandKey = "[QuickCommand]";

struct Split {
    std::string_view first;
    std::string_view rest;
    bool inTwo; ///< false when there was no blank; all of it is `first` then
};

Split atFirstBlank(std::string_view text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos)
        return {text, {}, false};
    return {text.substr(0, blank), text.substr(blank + 1), true};
}

/// The name that an older file marks as reserved, as an ordinary one; nothing for any other.
std::optional<std::string> withoutStar(std::string_view name) {
    const Split split = atFirstBlank(name);
    if (split.first != "*")
        return std::nullopt;
    return "+ " + std::string(split.rest);
}

/// Fills `bits`, the most significant first, from digits that have one blank behind each, as files
/// are saved; false when the value has any other form.
bool takeDigits(std::string_view value, std::vector<std::int16_t>& bits) {
    if (value.size() < 2 * bits.size())
        return false;
    const char* next = value.data();
    for (auto bit = bits.rbegin(); bit != bits.rend(); ++bit, next += 2) {
        const int digit = next[0] - '0';
        if ((digit & ~1) != 0 || next[1] != ' ')
            return false;
        *bit = static_cast<std::int16_t>(digit);
    }
    return true;
}

} // namespace

ConfigurationReader::ConfigurationReader(const Parts& parts, const std::string& fileName)
    : parts_(parts), session_(parts.session), file_(fileName) {
    for (ConfigurationSetting& setting :
         configurationSettings(parts_.dialog, session_, parts_.tabs))
        actions_[setting.key] = std::move(setting.read);
    actions_["[ApplyNow]"] = [this](const RecordValue&) { applyNow(); };
    actions_["[CommandToSend]"] = [this](const RecordValue& value) {
        commandToSend(textOf(value));
    };
    actions_["[UserChip]"] = [this](const RecordValue& value) {
        const std::string name = textOf(value);
        if (!parts_.tabs.addChip(name))
            missingChips_.push_back(name);
    };
    actions_["[BatchItem]"] = [this](const RecordValue& value) { batchItem(value); };
    actions_[std::string(recoveredFromKey)] = [this](const RecordValue& value) {
        recoveredFrom_ = unescapedName(textOf(value));
    };
    addDonglePins();
}

void ConfigurationReader::addDonglePins() {
    for (ConfigurationSetting& setting : donglePinSettings(parts_.dialog))
        actions_[setting.key] = [this, read = std::move(setting.read)](const RecordValue& value) {
            hasDonglePins_ = true;
            read(value);
            if (applied_) // once more would empty the lists
                parts_.dialog.showDonglePins();
        };
}

bool ConfigurationReader::isConfiguration() {
    try {
        const std::optional<std::string_view> line = file_.next();
        if (!line)
            return false;
        const std::string_view key = parseRecord(*line).key;
        isVersion2_ = key == firstKeyOfVersion2;
        return isVersion2_ || key == firstKeyOfVersion3;
    } catch (const Failure&) { // no record at all
        return false;
    }
}

void ConfigurationReader::read() {
    reset();
    const auto damaged = [this](std::string_view reason) {
        return fmt::format("The file \"{}\" is damaged in line {}: {}.",
                           printable(file_.fileName(), 200), file_.lineNumber(),
                           printable(reason, longestReason));
    };
    while (const std::optional<std::string_view> line = file_.next()) {
        try {
            play(*line);
        } catch (const Failure& failure) {
            if (failure.kind() == Failure::Kind::PortUnusable)
                throw; // the file is as it should be
            throw Failure(failure.kind(), damaged(failure.what()));
        } catch (const std::out_of_range&) {
            throw Failure(Failure::Kind::OutOfRange, damaged("Subscript out of range"));
        }
    }
}

void ConfigurationReader::reset() {
    ConfigureDialog& dialog = parts_.dialog;
    dialog.adapters.namedByFile.clear();
    parts_.tabs.reset();
    parts_.tabs.resetChips();
    for (forms::CheckBox* part :
         {&dialog.CheckEnable72361, &dialog.CheckEnable72518, &dialog.CheckEnable72517,
          &dialog.CheckEnable72537, &dialog.CheckEnable72516})
        part->setValue(0);
    parts_.commands.clear();
    parts_.emptied.forget();
    parts_.log.clear();
    parts_.batches.clear();
}

void ConfigurationReader::play(std::string_view line) {
    if (line.find_first_not_of(" \t") == std::string_view::npos)
        return;
    const ConfigurationRecord record = parseRecord(line);
    const auto* text = std::get_if<std::string_view>(&record.value);
    if (record.key == quickCommandKey) {
        quickCommand(text != nullptr ? *text : textOf(record.value));
        return;
    }
    const auto found = actions_.find(std::string(record.key));
    if (found == actions_.end())
        return;
    found->second(record.value);
}

void ConfigurationReader::applyNow() {
    parts_.dialog.setVisible(false);
    parts_.dialog.cmdApply_Click();
    applied_ = true;
    parts_.emptied.forget(); // of what was open before
    session_.QuickCommandTable.recreate(session_.SPIWordLength);
    nextCommandIsFirst_ = true;
}

void ConfigurationReader::quickCommand(std::string_view value) {
    const std::string_view name = takeBits(value);
    QuickCommandTable& table = session_.QuickCommandTable;
    if (!std::exchange(nextCommandIsFirst_, false))
        table.addRow();
    table.setBits(table.rows() - 1, bits_);
    std::string text = toUtf8(name);
    if (isVersion2_)
        text = withoutStar(text).value_or(text);
    table.nameLastRow(text);
    parts_.commands.addName(std::move(text));
    session_.QuickCommandTableEmpty = ConstOff;
}

std::string_view ConfigurationReader::takeBits(std::string_view value) {
    bits_.resize(static_cast<std::size_t>(session_.SPIWordLength));
    if (takeDigits(value, bits_))
        return value.substr(2 * bits_.size());
    std::string_view rest = value;
    for (std::size_t bit = bits_.size(); bit-- > 0;) {
        const Split split = atFirstBlank(rest);
        if (!split.inTwo)
            throw Failure(Failure::Kind::OutOfRange,
                          fmt::format("the Quick Command \"{}\" has no {} bits and a name",
                                      printable(toUtf8(value), 40), bits_.size()));
        bits_[bit] = toInt16(val(split.first));
        rest = split.rest;
    }
    return rest;
}

void ConfigurationReader::commandToSend(const std::string& line) {
    if (!isVersion2_) {
        parts_.commands.addToSend(line);
        return;
    }
    if (const std::optional<std::string> name = withoutStar(line))
        parts_.commands.addToSend(*name); // and once more as it was
    if (line == "Pause")
        parts_.commands.addToSend("* Pause");
    else if (line != "Trigger")
        parts_.commands.addToSend(line);
}

void ConfigurationReader::batchItem(const RecordValue& value) {
    const auto* item = std::get_if<std::string_view>(&value);
    const Split split = atFirstBlank(item != nullptr ? *item : std::string_view());
    const double number = numberOf(item != nullptr ? split.first : value);
    if (!split.inTwo)
        throw Failure(Failure::Kind::OutOfRange, "there is no text behind the number of the Batch");
    const std::string text = toUtf8(split.rest);
    if (number == session_.BatchCount()) {
        parts_.batches.add({text});
        return;
    }
    if (number < 1 || number > session_.BatchCount())
        throw Failure(Failure::Kind::OutOfRange, fmt::format("there is no Batch {}", number));
    session_.lstBatchList(toInt16(number)).push_back(text);
}

} // namespace bitlux
