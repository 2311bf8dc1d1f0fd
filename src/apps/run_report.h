#pragma once

#include "apps/word_report.h"

#include <cstddef>
#include <optional>
#include <string>

namespace bitlux {

/// Prints the events of a run over the commands to send; in JSON waits, pins and pauses too.
class RunReport : public WordReport {
public:
    RunReport(Program& program, const Clock& clock, std::ostream& output, bool json);

    /// The position of the run, as `line 5, "read id"`; empty when there is no run.
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
    /// The text of the present line; empty when there is no run.
    [[nodiscard]] std::string command() const;

    std::optional<std::size_t> line_; ///< that has begun
    Subscription progress_;
};

} // namespace bitlux
