#include "apps/expected_answers.h"

#include "apps/duration.h"

#include <limits>

#include <CLI/CLI.hpp>

namespace bitlux {

namespace {

void addLimits(CLI::App& command, ExpectOptions& options, CLI::Option* expect,
               const std::string& what) {
    addDuration(command, "--within", options.within, what + " for so long while it does not match")
        .needs(expect);
    command.add_option("--retries", options.retries, what + " so often while it does not match")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description("NUMBER"))
        ->needs(expect);
}

} // namespace

void addExpectOptions(CLI::App& command, ExpectOptions& options) {
    CLI::Option* expect =
        command
            .add_option("--expect", options.patterns,
                        "What answers have to be, with X for any: 5AXX, 0b1X0X, or value and mask "
                        "5A/F0; one for all words, or one a word")
            ->type_name("PATTERN,...")
            ->delimiter(',')
            ->take_all()
            ->allow_extra_args(false);
    addLimits(command, options, expect, "Send a word again");
}

void addExpectedFields(CLI::App& command, ExpectOptions& options) {
    CLI::Option* expect =
        command
            .add_option("--expect", options.patterns,
                        "What a field has to be, by number or text; exit code 3 if it is not")
            ->type_name("[REGISTER.]FIELD=VALUE")
            ->take_all()
            ->allow_extra_args(false);
    addLimits(command, options, expect, "Read again");
}

} // namespace bitlux
