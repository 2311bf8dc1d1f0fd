// Instructions for one Apply with an empty table of Quick Commands and with 10,000 in it, each
// between two dumps of callgrind's counter. To be run under callgrind with collection off at
// start; perf/run reads the dumps.

#include "bench/scripted_desk.h"
#include "program/program.h"
#include "workbench/virtual_bench.h"

#include <valgrind/callgrind.h>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int manyCommands = 10'000;

/// Fills the table and the list of names as if so many commands had been saved.
void fill(Program& program, int commands) {
    QuickCommandTable& table = program.session().QuickCommandTable;
    const std::vector<std::int16_t> word(table.wordLength(), 1);
    for (int n = 0; n < commands; ++n) {
        const std::string name = fmt::format("Command number {}", n);
        if (n > 0)
            table.addRow();
        table.nameLastRow(name);
        table.setBits(table.rows() - 1, word);
        program.mainForm().commands.cmbMasterQCList.addItem(name);
    }
}

void count(const std::string& name, Program& program) {
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    program.dialog().cmdApply_Click();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

} // namespace

int main() {
    VirtualClock clock;
    VirtualBench bench(clock, makeDevice("loopback"));
    ScriptedDesk desk(clock);
    Program program(bench.hardware(), desk.desk());
    program.Main();
    program.dialog().Btn_ParallelPort_Click();
    program.dialog().cmbSPIWordLength.setText("32");
    program.dialog().cmdApply_Click(); // what happens once does not count
    count("apply empty", program);
    fill(program, manyCommands);
    count("apply full", program);
}
