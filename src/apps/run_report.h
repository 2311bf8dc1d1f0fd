#pragma once

#include "apps/word_report.h"

#include <cstddef>
#include <optional>
#include <string>

namespace bitlux {

/// Prints what happens in a run over the commands to send; in JSON waits, pins and pauses too.
class RunReport : public WordReport {
public:
    RunReport(Program& program, const Clock& clock, std::ostream& output, bool json);

    /// Where the run is, as `line 5, "read id"`; empty while none is on.
    [[nodiscard]] std::string lineText() const;
    /// The run is at a line that sets a pin.
    [[nodiscard]] bool isAtPin() const;

private:
    [[nodiscard]] std::string place() const override;
    [[nodiscard]] std::string place(const std::string& line) const;
    void progressed();
    void lineBegins(const std::string& line);
    void waitBegins(const std::string& line, std::int64_t nanoseconds);
    [[nodiscard]] const std::optional<RunProgress>& progress() const;
    /// The text of the line that the run is at; empty while none is on.
    [[nodiscard]] std::string command() const;

    std::optional<std::size_t> line_; ///< that has begun
    Subscription progress_;
};

} // namespace bitlux
