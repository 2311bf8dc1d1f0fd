#include "apps/list_command.h"

#include "apps/examples.h"
#include "apps/plugged_in.h"
#include "bench/device.h"
#include "workbench/library_chips.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

using Row = std::pair<std::string, std::string>;

void print(const std::vector<Row>& rows, std::ostream& output) {
    std::size_t width = 0;
    for (const Row& row : rows)
        width = std::max(width, row.first.size());
    for (const Row& row : rows)
        fmt::print(output, "{:<{}}  {}\n", row.first, width, row.second);
}

} // namespace

CLI::App& addListCommand(CLI::App& app, ListOptions& options) {
    CLI::App& list = *app.add_subcommand(
        "list", "Print the devices of the virtual bench, and what is plugged in");
    list.add_flag("--names", options.names, "Print the names of the devices alone");
    addExamples(list, {"bitlux list", "bitlux list --names"});
    return list;
}

int runListCommand(const ListOptions& options, const Machine& machine, std::ostream& output) {
    const std::vector<std::string> names = benchDeviceNames();
    if (options.names) {
        for (const std::string& name : names)
            fmt::print(output, "{}\n", name);
        return 0;
    }
    std::vector<Row> devices;
    for (const std::string& name : names)
        devices.emplace_back(name, benchDeviceDescription(name));
    print(devices, output);
    std::vector<Row> buses;
    for (const PluggedIn& bus : findPluggedIn(machine))
        buses.emplace_back(bus.options, bus.text);
    fmt::print(output, "\nPlugged in:{}\n", buses.empty() ? " nothing" : "");
    print(buses, output);
    return 0;
}

} // namespace bitlux
