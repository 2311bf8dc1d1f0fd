#include "apps/show_command.h"

#include "apps/examples.h"
#include "apps/opened_file.h"
#include "apps/outlet.h"
#include "apps/settings_text.h"
#include "apps/terminal_desk.h"
#include "bench/scripted_desk.h"
#include "platform/failure.h"
#include "platform/printable.h"
#include "sending/command_line.h"
#include "sending/word_text.h"

#include <algorithm>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

constexpr std::size_t longestRecordName = 1000;

/// The program with a file, on a bench on which nothing is sent.
class Show {
public:
    Show(const ShowOptions& options, std::ostream& output, std::ostream& errors)
        : options_(options),
          output_(output),
          boxes_(errors),
          noFile_({}),
          bench_(clock_, makeDevice("none")),
          loop_(clock_),
          program_(bench_.hardware(),
                   {.boxes = boxes_, .fileDialogs = noFile_, .pointer = pointer_, .loop = loop_}) {}

    bool run() {
        program_.Main();
        program_.dialog().adapters.insteadOfFiles = ""; // it is printed and not used
        openConfiguration(program_, options_.file);
        if (boxes_.shown())
            return false;
        if (options_.batches) {
            printBatchNames();
            return true;
        }
        printSettings();
        printQuickCommands();
        printCommandsToSend();
        printBatches();
        return true;
    }

private:
    [[nodiscard]] const BatchLists& batches() { return program_.session().lstBatchList; }
    void printSettings();
    void printRows(const SettingRows& rows);
    void printQuickCommands();
    void printCommandsToSend();
    void printBatches();
    void printBatchNames();
    void printLine(std::size_t number, const std::string& line) {
        fmt::print(output_, "  {:>4}  {}{}\n", number, printable(line, longestRecordName),
                   hasNoWord(line) ? "  (no word)" : "");
    }
    /// For a Quick Command that does not exist; a run ends at such a line.
    [[nodiscard]] bool hasNoWord(const std::string& line) {
        return !isInstruction(line) &&
               (line.empty() || !program_.session().QuickCommandTable.lastRowNamed(line));
    }
    [[nodiscard]] std::string bus();

    const ShowOptions& options_;
    std::ostream& output_;
    TerminalBoxes boxes_;
    GivenFileName noFile_;
    QuietPointer pointer_;
    VirtualClock clock_;
    VirtualBench bench_;
    ScriptedLoop loop_;
    Program program_;
};

void Show::printSettings() {
    SettingRows rows = settingRows(program_);
    constexpr int behindWord = 2;
    rows.insert(rows.begin() + behindWord, {"Bus", bus()});
    fmt::print(output_, "Settings\n");
    printRows(rows);
}

/// Without a dongle the file cannot choose it, and with one the file does not read the pins of the
/// port. So it is opened again, when everything else is read.
std::string Show::bus() {
    bench_.dongle.plug();
    openConfiguration(program_, options_.file);
    const std::string& adapter = program_.dialog().adapters.namedByFile;
    const std::string port = adapter.empty()
                                 ? "the parallel port"
                                 : "the adapter " + printable(adapter, longestRecordName);
    return program_.engine().usesDongle() ? "the dongle, else " + port : port;
}

void Show::printRows(const SettingRows& rows) {
    std::size_t width = 0;
    for (const auto& row : rows)
        width = std::max(width, row.first.size());
    for (const auto& [name, value] : rows)
        fmt::print(output_, "  {:<{}}  {}\n", name, width, value);
}

void Show::printQuickCommands() {
    const QuickCommandTable& table = program_.session().QuickCommandTable;
    SettingRows rows;
    for (std::size_t row = 0; row < table.rows(); ++row)
        if (!table.name(row).empty()) // a free row has no name
            rows.emplace_back(hexText(table.bits(row)),
                              printable(table.name(row), longestRecordName));
    fmt::print(output_, "\nQuick Commands: {}\n", rows.size());
    printRows(rows);
}

void Show::printCommandsToSend() {
    const std::vector<std::string>& lines = program_.mainForm().commands.toSend();
    fmt::print(output_, "\nCommands To Send: {}\n", lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        printLine(i + 1, lines[i]);
}

void Show::printBatches() {
    fmt::print(output_, "\nBatches: {}\n", batches().count());
    for (int n = 1; n <= batches().count(); ++n) {
        const BatchLists::Lines& lines = batches()(n);
        fmt::print(output_, "  {}\n", printable(lines.front(), longestRecordName));
        for (std::size_t i = 1; i < lines.size(); ++i)
            printLine(i, lines[i]);
    }
}

void Show::printBatchNames() {
    for (int n = 1; n <= batches().count(); ++n)
        fmt::print(output_, "{}\n", printable(batches()(n).front(), longestRecordName));
}

} // namespace

CLI::App& addShowCommand(CLI::App& app, ShowOptions& options) {
    CLI::App& show = *app.add_subcommand("show", "Print what a configuration file holds");
    show.add_option("FILE", options.file, "A configuration file (*.spi)")->required();
    show.add_flag("--batches", options.batches, "Print the names of its Batches alone");
    addExamples(show, {"bitlux show board.spi", "bitlux show --batches board.spi"});
    return show;
}

int runShowCommand(const ShowOptions& options, std::ostream& output, std::ostream& errors) {
    try {
        return Show(options, output, errors).run() ? 0 : 1;
    } catch (const Failure& failure) {
        fmt::print(errors, "{}\n", failure.what());
        return 1;
    }
}

} // namespace bitlux
