// What a word costs more while a journal is recorded into a real file: words of 16 bits one after
// the other on a port without time, with and without it.

#include "null_port.h"
#include "program_rig.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

namespace {

using namespace bitlux;
using perf::median;

constexpr double limit = 5000; ///< nanoseconds
constexpr int rounds = 9;
constexpr int words = 20000;

/// Nanoseconds a word.
double timeOf(Program& program) {
    const SystemClock clock;
    Session& session = program.session();
    session.SPIWordLength = 16;
    const std::int64_t start = clock.nanoseconds();
    for (int n = 0; n < words; ++n) {
        session.WordToSend.assign(16, static_cast<std::int16_t>(n & 1));
        program.engine().SendSPI();
    }
    return static_cast<double>(clock.nanoseconds() - start) / words;
}

} // namespace

int main() {
    const std::unique_ptr<ParallelPort> port = perf::makeNullPort();
    perf::ProgramRig rig(*port);
    const std::string fileName = fmt::format(
        "{}/bitlux-journal-{}.jsonl", std::filesystem::temp_directory_path().string(), ::getpid());
    std::vector<double> more;
    for (int round = 0; round < rounds; ++round) {
        const double without = timeOf(rig.program);
        rig.program.journal().start(fileName);
        more.push_back(timeOf(rig.program) - without);
        rig.program.journal().stop();
    }
    std::filesystem::remove(fileName);
    fmt::print("journal: a word of 16 bits costs {:.2f} us more (limit {:.0f})\n",
               median(more) / 1000, limit / 1000);
    return median(more) <= limit ? 0 : 1;
}
