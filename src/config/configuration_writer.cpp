#include "config/configuration_writer.h"

#include "platform/code_page.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// Printable ASCII, as nearly all text is.
bool isPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Collects records, and refuses text that a record cannot hold.
class Records {
public:
    void addText(std::string_view key, std::string_view text) {
        begin(key);
        text_ += '"';
        append(key, text);
        text_ += "\"\r\n";
    }

    void add(const std::string& key, const ConfigurationSetting::Value& value) {
        if (const auto* text = std::get_if<std::string>(&value)) {
            addText(key, *text);
            return;
        }
        begin(key);
        if (const auto* number = std::get_if<int>(&value))
            fmt::format_to(std::back_inserter(text_), "{}\r\n", *number);
        else
            text_ += std::get<bool>(value) ? "#TRUE#\r\n" : "#FALSE#\r\n";
    }

    void addQuickCommand(const QuickCommandTable& table, std::size_t row) {
        constexpr std::string_view key = "[QuickCommand]";
        const auto bits = table.bits(row);
        begin(key);
        text_ += '"';
        std::size_t end = text_.size();
        text_.resize(end + 2 * bits.size(), ' ');
        for (auto bit = bits.rbegin(); bit != bits.rend(); ++bit, end += 2) {
            if (*bit != 0 && *bit != 1) {
                text_.resize(end);
                appendOtherBits(bits.first(static_cast<std::size_t>(bits.rend() - bit)));
                break;
            }
            text_[end] = static_cast<char>('0' + *bit);
        }
        append(key, table.name(row));
        text_ += "\"\r\n";
    }

    std::string take() { return std::move(text_); }

private:
    void begin(std::string_view key) { text_.append("\"").append(key).append("\","); }

    /// Of a free row, or of a file whose bits were none.
    void appendOtherBits(std::span<const std::int16_t> bits) {
        for (std::size_t i = bits.size(); i-- > 0;) {
            if (bits[i] != QuickCommandTable::noBit)
                fmt::format_to(std::back_inserter(text_), "{}", bits[i]);
            text_ += ' ';
        }
    }

    void append(std::string_view key, std::string_view text) {
        if (isPlain(text)) {
            text_ += text;
            return;
        }
        try {
            if (text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos)
                throw Failure(Failure::Kind::Conversion, "a text cannot hold an end of line");
            text_ += toCodePage(text);
        } catch (const Failure& failure) {
            throw Failure(failure.kind(), fmt::format("{} \"{}\" cannot be saved: {}.", key,
                                                      printable(text, 60), failure.what()));
        }
    }

    std::string text_;
};

} // namespace

std::string configurationText(const std::vector<ConfigurationSetting>& settings,
                              const Session& session,
                              const std::vector<std::string>& commandsToSend,
                              const std::vector<ConfigurationSetting>& atTheEnd) {
    Records records;
    records.addText("Bitlux Configuration File (Version 3.x.x)", "Verification Line");
    for (const ConfigurationSetting& setting : settings)
        if (setting.value)
            records.add(setting.key, setting.value());
    for (const std::string& name : session.UserChips)
        records.addText("[UserChip]", name);
    records.addText("[ApplyNow]", "This applies the Config Form changes above");
    for (std::size_t row = 0; row < session.QuickCommandTable.rows(); ++row)
        records.addQuickCommand(session.QuickCommandTable, row);
    for (const std::string& line : commandsToSend)
        records.addText("[CommandToSend]", line);
    for (int n = 1; n < session.BatchCount(); ++n)
        for (const std::string& line : session.lstBatchList(n))
            records.addText("[BatchItem]", fmt::format("{} {}", n, line));
    for (const ConfigurationSetting& setting : atTheEnd)
        records.add(setting.key, setting.value());
    return records.take();
}

} // namespace bitlux
