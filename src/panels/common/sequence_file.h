#pragma once

#include "platform/forms/line_source.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text files of sequences, in Windows-1252: a line of titles, then a line for each row with the
/// command and its value, a tab after each. Every line ends in carriage return and line feed.
namespace bitlux {

/// The rows of a sequence: as many values as commands.
struct SequenceRows {
    std::vector<std::string> commands;
    std::vector<std::string> values;
};

/// Replaces the file as a whole. Raises Failure (File) when it cannot be written, and (Conversion)
/// when a text has a tab or a line end or the code page lacks one of its characters.
void saveSequence(const std::string& fileName, const forms::LineSource& commands,
                  const forms::LineSource& values);

/// All rows, of which there is at least one; the first line is ignored. Raises Failure (File) when
/// the file cannot be read, and (Conversion) with file, line and reason when a row lacks its tabs.
SequenceRows loadSequence(const std::string& fileName);

/// The rows that can be read of a file whose lines are lists of fields: a field ends with the line,
/// at a comma, or at its closing quote, and each is a row. A row without its tabs, more than 1000
/// rows, or anything else that fails ends them. Nothing when not even the first field can be read,
/// whose content is ignored otherwise.
std::optional<SequenceRows> loadSequenceFields(const std::string& fileName);

/// Creates a file with the titles and one row, that of the headers.
void startSequenceFile(const std::string& fileName, std::string_view command,
                       std::string_view value);
/// Adds a row to a file. Both raise as saveSequence does.
void appendToSequenceFile(const std::string& fileName, std::string_view command,
                          std::string_view value);

} // namespace bitlux
