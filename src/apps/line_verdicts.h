#pragma once

#include "apps/expected_lines.h"
#include "platform/clock.h"
#include "platform/event.h"
#include "program/program.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// Compares the answers of a run with what was expected, line by line.
class LineVerdicts {
public:
    /// A line of the run, played once.
    struct Case {
        int pass = 1;
        std::size_t line = 0; ///< from 0
        std::string command;
        std::int64_t begin = 0; ///< nanoseconds on the clock
        std::int64_t end = 0;
        std::string mismatch; ///< empty when the answer is as expected, or none was
    };

    /// All outlive it.
    LineVerdicts(Program& program, const Clock& clock, const ExpectedLines& expected);

    /// An answer is not as expected: the line as `line 3, "read id"`, and what differs.
    std::function<void(const std::string& line, const std::string& text)> mismatched;

    /// The run goes over its lines once more.
    void beginPass() { ++pass_; }
    /// Ends the last line.
    void finish();
    [[nodiscard]] const std::vector<Case>& cases() const { return cases_; }
    [[nodiscard]] bool areGood() const;

    /// Replaces a file by a JUnit report with a test case for each line. Raises Failure (File).
    void saveJUnit(const std::string& fileName, const std::string& suite) const;

private:
    void progressed();
    void word();

    Program& program_;
    const Clock& clock_;
    const ExpectedLines& expected_;
    std::vector<Case> cases_;
    bool isOpen_ = false; ///< the last case goes on
    int pass_ = 0;
    std::array<Subscription, 2> subscriptions_;
};

} // namespace bitlux
