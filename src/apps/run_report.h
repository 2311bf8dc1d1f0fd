#pragma once

#include "platform/clock.h"
#include "program/program.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace bitlux {

/// Prints what happens in a run over the commands to send: a line a word, "SENT RECEIVED" in
/// hexadecimal, or objects of JSON, one a line. Times are milliseconds on the clock since it was
/// made.
class RunReport {
public:
    /// All outlive it; the words of `program` are printed for as long as it lives.
    RunReport(Program& program, const Clock& clock, std::ostream& output, bool json);

    void beginPass(int pass) { pass_ = pass; }
    /// In JSON the last object: how many passes were whole, and how the command ends.
    void end(int wholePasses, int exitCode);

    [[nodiscard]] std::uint64_t words() const { return words_; }

private:
    void word();
    void progressed();
    void lineBegins(const std::string& line);
    void waitBegins(const std::string& line, std::int64_t nanoseconds);
    [[nodiscard]] bool hasPin(std::string_view name) const;
    /// The text of the line that the run is at; empty while none is on.
    [[nodiscard]] std::string command() const;
    /// The members that every object of a line has.
    [[nodiscard]] std::string place(const std::string& line) const;
    [[nodiscard]] double milliseconds() const;

    Program& program_;
    const Clock& clock_;
    std::ostream& output_;
    bool json_;
    std::int64_t start_;
    std::uint64_t words_ = 0;
    int pass_ = 1;
    std::optional<std::size_t> line_; ///< that has begun
    Subscription transferred_;
    Subscription progress_;
};

} // namespace bitlux
