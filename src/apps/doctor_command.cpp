#include "apps/doctor_command.h"

#include "apps/checkup.h"
#include "apps/examples.h"
#include "apps/udev_rules.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

std::string_view word(Finding::Rank rank) {
    constexpr std::array<std::string_view, 3> words{"ok", "note", "wrong"};
    return words.at(static_cast<std::size_t>(rank));
}

std::size_t widestSubject(const Findings& findings) {
    std::size_t widest = 0;
    for (const Finding& finding : findings)
        widest = std::max(widest, finding.subject.size());
    return widest;
}

void print(std::string_view title, const Findings& findings, std::size_t width,
           std::ostream& output) {
    fmt::print(output, "{}\n", title);
    for (const Finding& finding : findings)
        fmt::print(output, "  {:<5}  {:<{}}  {}{}{}\n", word(finding.rank), finding.subject, width,
                   finding.text, finding.fix.empty() ? "" : ". To do: ", finding.fix);
}

bool anyUsable(const Findings& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.isUsable; });
}

/// No adapter is no fault.
std::string verdict(bool dongle, bool adapter, bool port) {
    std::vector<std::string_view> usable;
    for (const auto& [isUsable, name] : {std::pair{dongle, "the USB dongle"},
                                         {adapter, "the adapter"},
                                         {port, "the parallel port"}})
        if (isUsable)
            usable.emplace_back(name);
    if (usable.empty())
        return "Usable: nothing, neither a USB dongle nor an adapter nor a parallel port.";
    if (usable.size() == 3)
        return fmt::format("Usable: {}, {} and {}.", usable[0], usable[1], usable[2]);
    std::string all = fmt::format("Usable: {}.", fmt::join(usable, " and "));
    if (usable.size() > 1 || adapter)
        return all;
    return all + (dongle ? " The parallel port is not." : " No USB dongle is.");
}

int printRules(const Machine& machine, std::ostream& output, std::ostream& errors) {
    const DongleNumbers numbers(machine.dongleFiles);
    for (const std::string& problem : numbers.problems())
        fmt::print(errors, "{}\n", problem);
    output << udevRules(numbers.all());
    return 0;
}

} // namespace

CLI::App& addDoctorCommand(CLI::App& app, DoctorOptions& options) {
    CLI::App& doctor =
        *app.add_subcommand("doctor", "Tell which bus can be used, and what is missing");
    doctor.add_flag("--udev", options.udev,
                    "Print a udev rule file for adapters and the devices that dongles.conf lists");
    addExamples(doctor,
                {"bitlux doctor",
                 "bitlux doctor --udev | sudo tee /etc/udev/rules.d/70-bitlux-forge.rules"});
    return doctor;
}

int runDoctorCommand(const DoctorOptions& options, const Machine& machine, std::ostream& output,
                     std::ostream& errors) {
    if (options.udev)
        return printRules(machine, output, errors);
    const Findings dongles = examineDongles(machine, DongleNumbers(machine.dongleFiles));
    const Findings adapters = examineAdapters(machine);
    const Findings ports = examinePorts(machine);
    const std::size_t width =
        std::max({widestSubject(dongles), widestSubject(adapters), widestSubject(ports)});
    print("USB dongle", dongles, width, output);
    print("FTDI adapter", adapters, width, output);
    print("Parallel port", ports, width, output);
    const bool dongle = anyUsable(dongles);
    const bool adapter = anyUsable(adapters);
    const bool port = anyUsable(ports);
    fmt::print(output, "{}\n", verdict(dongle, adapter, port));
    return dongle || adapter || port ? 0 : 1;
}

} // namespace bitlux
