#include "apps/expected_answers.h"

#include "apps/duration.h"

#include <limits>

#include <CLI/CLI.hpp>

namespace bitlux {

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
    addDuration(command, "--within", options.within,
                "Send a word again for so long while its answer does not match")
        .needs(expect);
    command
        .add_option("--retries", options.retries,
                    "Send a word again so often while its answer does not match")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description("NUMBER"))
        ->needs(expect);
}

} // namespace bitlux
