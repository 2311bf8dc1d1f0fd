#pragma once

#include "journal/journal_entry.h"
#include "platform/line_reader.h"

#include <optional>
#include <string>
#include <string_view>

namespace bitlux {

/// Reads a journal line by line, however long it is.
class JournalReader {
public:
    /// Raises Failure (File) when the file cannot be read.
    explicit JournalReader(const std::string& fileName);

    /// The next line; nothing after the last. Raises Failure (Conversion) with file, line and
    /// reason for one that is wrong. A last line that was cut off counts as none.
    std::optional<JournalEntry> next();
    /// Whether the last line was cut off; known when there are no more.
    [[nodiscard]] bool isCutOff() const { return isCutOff_; }

private:
    [[nodiscard]] JournalEntry entryFrom(std::string_view line);
    [[nodiscard]] JournalWord wordFrom(const nlohmann::ordered_json& object) const;
    [[nodiscard]] std::string digits(const nlohmann::ordered_json& value, const char* name) const;

    LineReader lines_;
    bool endsWithLine_;
    bool isCutOff_ = false;
    std::optional<int> bits_; ///< of the words, once the first line has been read
};

/// What a replay has to know before it starts.
struct JournalSurvey {
    JournalSettings settings; ///< of the first line
    bool usesDongle = false;  ///< somewhere
    bool isCutOff = false;
};

/// Reads all of a journal. Raises Failure as JournalReader does.
JournalSurvey surveyJournal(const std::string& fileName);

} // namespace bitlux
