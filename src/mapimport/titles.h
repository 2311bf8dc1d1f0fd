#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace bitlux::mapimport {

/// A text as it may be used in a chip's file: in one line, without control characters, in UTF-8, at
/// most `most` bytes and "..." long. `isChanged` is set when more than blanks was changed.
std::string cleanText(std::string_view text, std::size_t most, bool& isChanged);

/// A name as a title: a clean text without braces, in characters that a file of a sequence can
/// hold.
std::string cleanTitle(std::string_view name, bool& isChanged);

/// Titles of registers and fields from which no two controls of one name are derived.
class TitleBook {
public:
    TitleBook();

    /// The title, else with the first number appended with which it is free: "CR_2".
    std::string registerTitle(const std::string& wanted);
    /// The same for a field of a register with this title.
    std::string fieldTitle(const std::string& owner, const std::string& wanted);

private:
    std::set<std::string> taken_;     ///< names of controls, in lower case
    std::map<std::string, int> next_; ///< number for the next title of this text
};

} // namespace bitlux::mapimport
