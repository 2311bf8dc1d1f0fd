#include "panels/common/sequence_file.h"

#include "platform/code_page.h"
#include "platform/failure.h"
#include "platform/line_reader.h"
#include "platform/printable.h"
#include "platform/text_file.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::string_view titles = "Command\tValue";
constexpr std::size_t longestName = 200; // in a message

std::string lineOf(std::string_view command, std::string_view value) {
    for (const std::string_view text : {command, value})
        if (text.find_first_of("\t\r\n") != std::string_view::npos)
            throw Failure(Failure::Kind::Conversion,
                          fmt::format("\"{}\" has a tab or a line end and cannot be saved",
                                      printable(text, longestName)));
    return toCodePage(fmt::format("{}\t{}\t", command, value));
}

[[noreturn]] void failDamaged(const LineReader& file, std::string_view reason) {
    throw Failure(Failure::Kind::Conversion,
                  fmt::format("The file \"{}\" is damaged in line {}: {}.",
                              printable(file.fileName(), longestName), file.lineNumber(), reason));
}

/// False for a line without its tabs.
bool addRow(SequenceRows& rows, std::string_view line) {
    const std::size_t first = line.find('\t');
    const std::size_t second = first == std::string_view::npos ? first : line.find('\t', first + 1);
    if (second == std::string_view::npos)
        return false;
    rows.commands.push_back(toUtf8(line.substr(0, first)));
    rows.values.push_back(toUtf8(line.substr(first + 1, second - first - 1)));
    return true;
}

/// The fields of a file, one after the other.
class FieldReader {
public:
    explicit FieldReader(const std::string& fileName) : lines_(fileName) {}

    /// Nothing after the last one, and when the rest of the file cannot be read.
    std::optional<std::string_view> next() {
        if (!rest_)
            rest_ = nextLine();
        if (!rest_)
            return std::nullopt;
        const std::string_view text =
            rest_->substr(std::min(rest_->find_first_not_of(' '), rest_->size()));
        const bool quoted = text.starts_with('"');
        const std::string_view field =
            quoted ? text.substr(1, text.find('"', 1) - 1) : text.substr(0, text.find(','));
        const std::size_t comma = text.find(',', quoted ? field.size() + 1 : 0);
        if (comma == std::string_view::npos)
            rest_.reset();
        else
            rest_ = text.substr(comma + 1);
        return field;
    }

private:
    std::optional<std::string_view> nextLine() {
        try {
            return lines_.next();
        } catch (const Failure&) {
            return std::nullopt;
        }
    }

    LineReader lines_;
    std::optional<std::string_view> rest_; ///< of the line
};

} // namespace

void saveSequence(const std::string& fileName, const forms::LineSource& commands,
                  const forms::LineSource& values) {
    replaceTextFile(fileName, [&](const auto& writeLine) {
        writeLine(titles);
        for (std::size_t row = 0; row < commands.size(); ++row)
            writeLine(lineOf(commands.line(row), values.line(row)));
    });
}

SequenceRows loadSequence(const std::string& fileName) {
    LineReader file(fileName);
    file.next();
    SequenceRows rows;
    while (const std::optional<std::string_view> line = file.next())
        if (!addRow(rows, *line))
            failDamaged(file, "there is no tab behind the command and behind the value");
    if (rows.commands.empty())
        failDamaged(file, "there is no row of headers behind it");
    return rows;
}

std::optional<SequenceRows> loadSequenceFields(const std::string& fileName) {
    constexpr std::size_t most = 1000;
    std::optional<FieldReader> fields;
    try {
        fields.emplace(fileName);
    } catch (const Failure&) {
        return std::nullopt;
    }
    if (!fields->next())
        return std::nullopt;
    SequenceRows rows;
    while (const std::optional<std::string_view> field = fields->next())
        if (rows.commands.size() == most || !addRow(rows, *field))
            break;
    return rows;
}

void startSequenceFile(const std::string& fileName, std::string_view command,
                       std::string_view value) {
    replaceTextFile(fileName, [&](const auto& writeLine) {
        writeLine(titles);
        writeLine(lineOf(command, value));
    });
}

void appendToSequenceFile(const std::string& fileName, std::string_view command,
                          std::string_view value) {
    appendLine(fileName, lineOf(command, value));
}

} // namespace bitlux
