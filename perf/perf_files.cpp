// Instructions for reading and writing a configuration file of 100,000 and of 50,000 Quick Commands
// of 32 bits, each beside std::getline over the same file, between dumps of callgrind's counter. To
// be run under callgrind with collection off at start; perf/run reads the dumps. Without callgrind
// the times are printed.

#include "large_file.h"

#include "bench/scripted_desk.h"
#include "platform/clock.h"
#include "program/program.h"
#include "workbench/virtual_bench.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include <valgrind/callgrind.h>

#include <fmt/format.h>

namespace {

using namespace bitlux;

void count(const std::string& name, const std::function<void()>& action) {
    const SystemClock clock;
    const std::int64_t start = clock.nanoseconds();
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    action();
    CALLGRIND_TOGGLE_COLLECT;
    const std::string dump = "files " + name;
    CALLGRIND_DUMP_STATS_AT(dump.c_str());
    if (RUNNING_ON_VALGRIND == 0)
        fmt::print("{}: {:.1f} ms\n", name, static_cast<double>(clock.nanoseconds() - start) / 1e6);
}

void readLines(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::string line;
    while (std::getline(file, line))
        if (line.empty())
            throw std::runtime_error("an empty line");
}

void measure(const std::string& folder, int commands) {
    const std::string name = fmt::format("{}/{}.spi", folder, commands);
    perf::writeLargeFile(name, commands);
    VirtualClock clock;
    VirtualBench bench(clock, makeDevice("loopback"));
    ScriptedDesk desk(clock);
    Program program(bench.hardware(), desk.desk());
    program.Main();
    const auto label = [commands](const char* what) {
        return fmt::format("{} {}", what, commands);
    };
    count(label("getline"), [&] { readLines(name); });
    count(label("open"), [&] { program.mainForm().files.open(name); });
    count(label("save"), [&] { program.mainForm().files.itemSave_Click(); });
    if (program.session().QuickCommandTable.rows() != static_cast<std::size_t>(commands))
        throw std::runtime_error("the Quick Commands were not read");
}

} // namespace

int main() {
    std::string folder = (std::filesystem::temp_directory_path() / "bitlux-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr)
        return 1;
    measure(folder, 50'000);
    measure(folder, 100'000);
    std::filesystem::remove_all(folder);
}
