#pragma once

#include "sending/answer_pattern.h"

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// The exit code when an answer or a value is not what it was to be.
inline constexpr int differsError = 3;

/// What the answers to words have to be, and how long to wait for it.
struct ExpectOptions {
    std::vector<std::string> patterns; ///< one for all words, or one a word
    std::int64_t within = 0;           ///< nanoseconds in which a word is sent again; 0 for none
    int retries = 0; ///< how often a word is sent again; 0 without a limit of its own
};

/// Adds the options to a command: patterns of answers.
void addExpectOptions(CLI::App& command, ExpectOptions& options);
/// The same for fields of registers; each --expect has one.
void addExpectedFields(CLI::App& command, ExpectOptions& options);

/// Whether an answer that does not match may be asked for again.
class Retries {
public:
    /// `now` in nanoseconds, when the first word is sent.
    Retries(const ExpectOptions& options, std::int64_t now)
        : options_(options), end_(now + options.within) {}

    /// Counts one more. With both limits the nearer one counts.
    [[nodiscard]] bool mayAskAgain(std::int64_t now) {
        ++asked_;
        if (options_.within == 0)
            return asked_ <= options_.retries;
        return now < end_ && (options_.retries == 0 || asked_ <= options_.retries);
    }

private:
    const ExpectOptions& options_;
    std::int64_t end_;
    int asked_ = 0;
};

} // namespace bitlux
