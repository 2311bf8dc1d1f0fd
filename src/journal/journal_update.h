#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace bitlux {

/// Answers by the lines of a journal; nothing for a word that got none.
using JournalAnswers = std::map<std::size_t, std::optional<std::string>>;

/// Puts other answers into a journal, which is replaced as a whole; all other lines stay as they
/// are, and a last one that was cut off goes. Raises Failure (File).
void updateJournal(const std::string& fileName, const JournalAnswers& answers);

} // namespace bitlux
