#pragma once

#include "sending/copied_words.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bitlux {

class Program;

/// The words that the main form shows, as texts by which they are sent again by other means.
class WordCopies {
public:
    enum class Form : std::uint8_t { Python, CommandLine, CBytes };

    /// The program outlives it.
    explicit WordCopies(Program& program) : program_(program) {}

    /// Options by which `bitlux send` sends to the same virtual bench; none on hardware.
    std::function<std::vector<std::string>()> bench = [] { return std::vector<std::string>(); };

    /// The word of a line of the Session Log, of the type and order in force; none for a line that
    /// belongs to no word.
    [[nodiscard]] std::vector<CopiedWord> ofLogLine(std::size_t line) const;
    /// The word of a Quick Command; none when there is none of this name.
    [[nodiscard]] std::vector<CopiedWord> ofQuickCommand(const std::string& name) const;
    /// The words of rows of the decoded log.
    [[nodiscard]] std::vector<CopiedWord> ofRows(const std::vector<std::size_t>& rows) const;

    /// See copied_words.h; bus and wiring are those in force.
    [[nodiscard]] std::string text(Form form, const std::vector<CopiedWord>& words) const;

private:
    [[nodiscard]] std::vector<std::string> sendOptions() const;
    [[nodiscard]] std::vector<CopiedWord> inForce(std::vector<std::int16_t> bits) const;

    Program& program_;
};

} // namespace bitlux
