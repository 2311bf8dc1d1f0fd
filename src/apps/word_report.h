#pragma once

#include "platform/clock.h"
#include "program/program.h"

#include <array>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

namespace bitlux {

/// Prints the words that a program sends, each when its answer has arrived: a line "SENT RECEIVED"
/// in hexadecimal, or a JSON object. Times are milliseconds on the clock since its construction. An
/// output that cannot be written raises Failure (File).
class WordReport {
public:
    /// All outlive it; the words of `program` are printed while it exists.
    WordReport(Program& program, const Clock& clock, std::ostream& output, bool json);
    virtual ~WordReport() = default;
    WordReport(const WordReport&) = delete;
    WordReport& operator=(const WordReport&) = delete;

    void beginPass() { ++pass_; }
    void endPass() { ++wholePasses_; }
    /// In JSON the last object: the number of complete passes, and how the command ends.
    void end(int exitCode);
    /// Prints a line, or in JSON an object given without its braces.
    void printLine(const std::string& line);
    void printObject(const std::string& members);
    [[nodiscard]] bool isJson() const { return json_; }
    [[nodiscard]] double milliseconds() const;

    /// Called before anything is printed.
    std::function<void()> printing;
    /// The present pass, from 1.
    [[nodiscard]] int pass() const { return pass_; }
    /// The number of answered words.
    [[nodiscard]] std::uint64_t words() const { return words_; }
    /// The time since the word in transfer was sent, in nanoseconds; 0 when there is none.
    [[nodiscard]] std::int64_t sendingFor() const;
    [[nodiscard]] bool isSending() const { return sendingSince_ >= 0; }

protected:
    [[nodiscard]] Program& program() const { return program_; }
    [[nodiscard]] const Clock& clock() const { return clock_; }
    /// The members that objects have in common.
    [[nodiscard]] virtual std::string place() const;
    /// Prints a word that was answered.
    virtual void printWord();
    /// Further members of the object of a word, each after a comma.
    [[nodiscard]] virtual std::string moreOfWord() const { return {}; }

private:
    static constexpr std::int64_t never = -1;

    void word();

    Program& program_;
    const Clock& clock_;
    std::ostream& output_;
    bool json_;
    std::int64_t start_;
    std::int64_t sendingSince_ = never;
    std::uint64_t words_ = 0;
    int pass_ = 0;
    int wholePasses_ = 0;
    std::array<Subscription, 4> subscriptions_;
};

} // namespace bitlux
