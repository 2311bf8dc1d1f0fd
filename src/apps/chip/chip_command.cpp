#include "apps/chip/chip_command.h"

#include "apps/chip/register_command.h"
#include "apps/chip/register_map.h"
#include "platform/failure.h"
#include "platform/printable.h"
#include "registers/register_catalog.h"

#include <algorithm>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

constexpr std::size_t longestFileName = 1000;

constexpr const char* examples =
    "Examples:\n"
    "    bitlux chip list\n"
    "    bitlux chip show zt72518\n"
    "    bitlux chip check examples/chips/adxl345.toml\n"
    "    bitlux chip import meter.svd -o meter.toml\n"
    "    bitlux chip read zt72516 INIT TIMER --bench zt72516\n"
    "    bitlux chip write zt72516 INIT.WD_spi=1 --bench zt72516\n"
    "Chips of your own are files in ~/.local/share/bitlux-forge/chips.\n";

/// The title of a chip with its description, which requires reading it.
std::string lineOf(chips::ChipLibrary& library, const chips::ChipLibrary::Entry& entry) {
    constexpr std::size_t longestText = 200;
    try {
        const chips::ChipPtr chip = library.chip(entry.name);
        return printable(chip->title + (chip->description.empty() ? "" : ": ") + chip->description,
                         longestText);
    } catch (const Failure&) {
        return fmt::format("damaged, see: bitlux chip check {}",
                           printable(entry.file, longestFileName));
    }
}

void list(const ChipOptions& options, std::ostream& output, std::ostream& errors) {
    chips::ChipLibrary library;
    const std::vector<chips::ChipLibrary::Entry> entries = library.entries();
    std::size_t width = 0;
    for (const chips::ChipLibrary::Entry& entry : entries)
        width = std::max(width, entry.name.size());
    for (const chips::ChipLibrary::Entry& entry : entries)
        if (options.names)
            fmt::print(output, "{}\n", entry.name);
        else
            fmt::print(output, "{:<{}}  {:<7}  {}\n", entry.name, width,
                       entry.file.empty() ? "program" : "user", lineOf(library, entry));
    if (!options.names)
        for (const std::string& reason : library.leftOut())
            fmt::print(errors, "{}\n", reason);
}

void show(const ChipOptions& options, std::ostream& output) {
    chips::ChipLibrary library;
    const chips::ChipPtr chip = chips::chosenChip(library, options.chip);
    if (!options.names && !options.fields)
        return printRegisterMap(*chip, output);
    const RegisterCatalog catalog(chip);
    for (const RegisterItem& item : catalog.items())
        if (options.names)
            fmt::print(output, "{}\n", item.name);
        else if (item.writable())
            for (const NamedField& field : item.fields)
                fmt::print(output, "{}.{}\n", item.name, field.name);
}

int check(const std::string& file, std::ostream& output, std::ostream& errors) {
    chips::ChipFile result = chips::readChipFile(file);
    if (result.chip)
        result.problems = chips::problemsOfUsersChip(*result.chip);
    if (!result.problems.empty()) {
        fmt::print(errors, "{}\n", chips::describe(result.problems, file));
        return 1;
    }
    const chips::Chip& chip = *result.chip;
    fmt::print(output, "{}: {}, {} registers, {} commands, no problems\n",
               printable(file, longestFileName), chip.name, chip.registers.size(),
               chip.commands.size());
    return 0;
}

} // namespace

CLI::App& addChipCommand(CLI::App& app, ChipOptions& options) {
    using Task = ChipOptions::Task;
    CLI::App& chip = *app.add_subcommand(
        "chip", "Read and write registers of chips by name; list, show, check and import chips");
    chip.require_subcommand(1);
    chip.footer(examples);
    const auto add = [&](const char* name, const char* purpose, Task task) -> CLI::App& {
        CLI::App& made = *chip.add_subcommand(name, purpose);
        made.callback([&options, task] { options.task = task; });
        return made;
    };
    add("list", "Print the chips: those of the program, and those in files of users", Task::List)
        .add_flag("--names", options.names, "Print their names alone");
    CLI::App& show = add("show", "Print the registers of a chip", Task::Show);
    show.add_option("CHIP", options.chip, "Name of a chip, or a file (*.toml)")->required();
    show.add_flag("--names", options.names, "Print only the names of its registers and flags");
    show.add_flag("--fields", options.fields, "Print only the REGISTER.FIELD that can be written");
    add("check", "Print what is wrong with a file, with line, column and advice", Task::Check)
        .add_option("FILE", options.chip, "A file of a chip (*.toml)")
        ->required();
    addImportCommand(chip, options.import);
    addRegisterCommands(chip, options.registers);
    return chip;
}

int runChipCommand(const ChipOptions& options, std::ostream& output, std::ostream& errors) {
    if (options.registers.task != RegisterOptions::Task::None)
        return runRegisterCommand(options.registers, output, errors);
    try {
        if (options.import.isGiven)
            return runImportCommand(options.import, output, errors);
        if (options.task == ChipOptions::Task::Check)
            return check(options.chip, output, errors);
        if (options.task == ChipOptions::Task::Show)
            show(options, output);
        else
            list(options, output, errors);
        return 0;
    } catch (const Failure& failure) {
        fmt::print(errors, "{}\n", failure.what());
        return 1;
    }
}

} // namespace bitlux
