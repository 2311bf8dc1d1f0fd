// Instructions for a word: engine and bare loop, each between two dumps of callgrind's counter.
// To be run under callgrind with collection off at start; perf/run reads the dumps.

#include "engine_bench.h"

#include <valgrind/callgrind.h>

namespace {

constexpr int words = 100;

template <typename Send>
void count(const std::string& name, Send send) {
    send(); // what happens once does not count
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    for (int i = 0; i < words; ++i)
        send();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

} // namespace

int main() {
    for (const auto& bench : bitlux::perf::EngineBench::all()) {
        count("bare " + bench->name, [&bench] { bench->bare.send(); });
        count("engine " + bench->name, [&bench] { bench->engine.SendSPI(); });
    }
}
