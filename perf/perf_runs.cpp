// Runs over Quick Commands on a port that costs nothing, and what it costs to change one command
// among many. Every figure is a ratio of times of the same run.

#include "null_port.h"
#include "program_rig.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int commands = 10'000;
constexpr int rounds = 15;
constexpr double growthLimit = 11; // of ten times as much
constexpr double lineLimit = 10;   // words
constexpr double changeLimit = 4;  // copyings of all names

std::string nameOf(int command) {
    return fmt::format("Quick Command {:05}", command);
}

class Bench {
public:
    Bench() : rig_(*port_), form_(rig_.program.mainForm()) {
        rig_.program.session().SessionLogCapacity = std::numeric_limits<std::int16_t>::max();
        QuickCommandTable& table = rig_.program.session().QuickCommandTable;
        const std::vector<std::int16_t> word(32, 1);
        for (int i = 0; i < commands; ++i) {
            if (i > 0)
                table.addRow();
            table.nameLastRow(nameOf(i));
            table.setBits(table.rows() - 1, word);
        }
        rig_.program.session().QuickCommandTableEmpty = ConstOff;
        form_.quickCommands.rebuildLists();
    }

    [[nodiscard]] double time(const std::function<void()>& action) const {
        const std::int64_t start = rig_.clock.nanoseconds();
        action();
        return static_cast<double>(rig_.clock.nanoseconds() - start);
    }

    /// Plays lines spread over the table, from one of them on, and logs them.
    double timeOfRun(int first, int lines) {
        std::vector<std::string> toSend;
        for (int i = first; i < first + lines; ++i)
            toSend.push_back(nameOf(static_cast<int>(i * 7919LL % commands)));
        form_.commands.setToSend(std::move(toSend));
        return time([this] { form_.multiple.DoSPIMultiple(); });
    }
    void clearLog() { form_.log.clear(); }

    double timeOfWord() {
        rig_.program.session().WordToSend.assign(32, 1);
        constexpr int words = 1000;
        return time([this] {
                   for (int i = 0; i < words; ++i)
                       rig_.program.engine().SendSPI();
               }) /
               words;
    }

    /// Whether anything but a question to overwrite was shown.
    [[nodiscard]] bool refused() const {
        const auto& boxes = rig_.desk.boxes.shown();
        return std::any_of(boxes.begin(), boxes.end(), [](const MessageBox& box) {
            return box.buttons != MessageBox::Buttons::YesNo;
        });
    }

    /// Copies all names into two lists that are full.
    double timeOfCopying() {
        const std::vector<std::string> names = form_.commands.cmbMasterQCList.items();
        std::vector<std::string> lists[] = {names, names};
        return time([&] {
            for (std::vector<std::string>& list : lists) {
                list.clear();
                for (const std::string& name : names)
                    list.push_back(name);
            }
        });
    }

    double timeOfSaving() {
        form_.commands.cmbMasterQCList.setEditText("one more");
        return time([this] { form_.quickCommands.cmdSaveQC_Click(); });
    }
    double timeOfOverwriting() {
        form_.commands.cmbMasterQCList.setEditText(nameOf(commands / 2));
        rig_.desk.boxes.answer(MessageBox::Answer::Yes);
        return time([this] { form_.quickCommands.cmdSaveQC_Click(); });
    }
    /// Deletes the last command, so that saving finds the table as it was.
    double timeOfDeleting() {
        form_.commands.cmbMasterQCList.setListIndex(commands);
        return time([this] { form_.quickCommands.cmdDeleteQC_Click(); });
    }

private:
    std::unique_ptr<ParallelPort> port_ = perf::makeNullPort();
    perf::ProgramRig rig_;
    MainForm& form_;
};

/// The shortest of the rounds, which nothing else on the machine has disturbed.
double shortest(const std::vector<double>& times) {
    return *std::min_element(times.begin(), times.end());
}

bool measureRuns(Bench& bench) {
    std::vector<double> words;
    std::vector<double> tenths;
    std::vector<double> wholes;
    for (int round = 0; round < rounds; ++round) {
        words.push_back(bench.timeOfWord());
        // Ten short runs touch together what the long one touches.
        double parts = 0;
        for (int part = 0; part < 10; ++part) {
            if (part % 5 == 0) // no log takes them all
                bench.clearLog();
            parts += bench.timeOfRun(part * commands / 10, commands / 10);
        }
        tenths.push_back(parts / 10);
        bench.clearLog();
        wholes.push_back(bench.timeOfRun(0, commands));
    }
    const double growth = shortest(wholes) / shortest(tenths);
    const double line = shortest(wholes) / commands;
    fmt::print("runs: 10,000 lines over 10,000 Quick Commands take {:.1f} times as long as 1,000 "
               "(at most {})\n",
               growth, growthLimit);
    fmt::print(
        "runs: a line takes {:.2f} us, {:.1f} times the {:.2f} us of a word of 32 bits alone "
        "(at most {})\n",
        line / 1000, line / shortest(words), shortest(words) / 1000, lineLimit);
    return growth <= growthLimit && line <= lineLimit * shortest(words);
}

bool measureChanges(Bench& bench) {
    std::vector<double> copying;
    std::vector<double> saving;
    std::vector<double> overwriting;
    std::vector<double> deleting;
    for (int round = 0; round < rounds; ++round) {
        copying.push_back(bench.timeOfCopying());
        saving.push_back(bench.timeOfSaving());
        overwriting.push_back(bench.timeOfOverwriting());
        deleting.push_back(bench.timeOfDeleting());
    }
    const double unit = shortest(copying);
    fmt::print("commands: among 10,000, saving one costs {:.2f} times the copying of all names "
               "into two lists, overwriting {:.2f}, deleting {:.2f} (at most {})\n",
               shortest(saving) / unit, shortest(overwriting) / unit, shortest(deleting) / unit,
               changeLimit);
    return std::max({shortest(saving), shortest(overwriting), shortest(deleting)}) <=
           changeLimit * unit;
}

/// Nanoseconds for a table that grows row by row.
double timeOfGrowing(int rows) {
    const SystemClock clock;
    const std::int64_t start = clock.nanoseconds();
    QuickCommandTable table;
    table.recreate(32);
    for (int i = 1; i < rows; ++i) {
        table.addRow();
        table.nameLastRow("Quick Command");
    }
    return static_cast<double>(clock.nanoseconds() - start);
}

bool measureGrowth() {
    std::vector<double> tenths;
    std::vector<double> wholes;
    for (int round = 0; round < rounds; ++round) {
        tenths.push_back(timeOfGrowing(commands / 10));
        wholes.push_back(timeOfGrowing(commands));
    }
    const double growth = shortest(wholes) / shortest(tenths);
    // Fresh memory is dearer the more of it there is; growth by copying would cost 100 times.
    constexpr double limit = 25;
    fmt::print("commands: growing the table to 10,000 rows takes {:.1f} times as long as to 1,000 "
               "(at most {})\n",
               growth, limit);
    return growth <= limit;
}

} // namespace

int main() {
    Bench bench;
    const bool runs = measureRuns(bench);
    const bool changes = measureChanges(bench);
    const bool growth = measureGrowth();
    if (bench.refused()) // a box would have taken the place of the work
        return 1;
    return runs && changes && growth ? 0 : 1;
}
