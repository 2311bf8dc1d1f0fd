#include "apps/output_options.h"

#include <utility>

#include <CLI/CLI.hpp>

namespace bitlux {

std::function<void()> addOutputOptions(CLI::App& command, OutputOptions& options) {
    command
        .add_option("--trace", options.trace,
                    "Write every access or frame of the words, - to print them")
        ->type_name("FILE|-");
    command
        .add_option("--log", options.log,
                    "Write the Session Log, each word as it comes, - to print it in the end")
        ->type_name("FILE|-");
    command
        .add_option("--vcd", options.vcd, "Save the waveform of the words as a value change dump")
        ->type_name("FILE");
    command.add_option("--sr", options.sr, "Save it as a sigrok session")->type_name("FILE");
    command
        .add_option("--journal", options.journal,
                    "Record the words and their answers, as they come, for bitlux replay")
        ->type_name("FILE");
    command.add_flag("--json", options.json, "Print objects of JSON, one a line");
    return [&options] {
        for (const auto& [name, file] :
             {std::pair("--vcd", &options.vcd), std::pair("--sr", &options.sr),
              std::pair("--journal", &options.journal)})
            if (*file == "-")
                throw CLI::ValidationError(name, "needs a file; the standard output has the words");
        if (options.json && (options.log == "-" || options.trace == "-"))
            throw CLI::ValidationError(options.log == "-" ? "--log" : "--trace",
                                       "with --json needs a file");
    };
}

} // namespace bitlux
