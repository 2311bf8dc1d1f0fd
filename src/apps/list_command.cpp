#include "apps/list_command.h"

#include "apps/examples.h"
#include "bench/device.h"
#include "workbench/library_chips.h"

#include <algorithm>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

CLI::App& addListCommand(CLI::App& app, ListOptions& options) {
    CLI::App& list = *app.add_subcommand("list", "Print the devices of the virtual bench");
    list.add_flag("--names", options.names, "Print their names alone");
    addExamples(list, {"bitlux list", "bitlux list --names"});
    return list;
}

int runListCommand(const ListOptions& options, std::ostream& output) {
    const std::vector<std::string> names = benchDeviceNames();
    std::size_t width = 0;
    for (const std::string& name : names)
        width = std::max(width, name.size());
    for (const std::string& name : names)
        if (options.names)
            fmt::print(output, "{}\n", name);
        else
            fmt::print(output, "{:<{}}  {}\n", name, width, benchDeviceDescription(name));
    return 0;
}

} // namespace bitlux
