// Time for a word: the engine against the bare loop. Repetitions of both are interleaved, so that
// the ratio of their medians holds while the machine's speed drifts. Where stack and heap happen to
// lie decides about some nanoseconds a word: perf/run starts this several times.

#include "engine_bench.h"

#include <algorithm>
#include <map>

#include <benchmark/benchmark.h>

namespace {

class RatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
    }

    void print() {
        for (auto& [name, times] : times_) {
            if (!name.starts_with("engine "))
                continue;
            const std::string shape = name.substr(name.find(' ') + 1);
            const double engine = median(times);
            const double bare = median(times_.at("bare " + shape));
            fmt::print("{} {:.1f} {:.1f} {:.3f}\n", shape, engine, bare, engine / bare);
        }
    }

private:
    static double median(std::vector<double>& values) {
        std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2),
                         values.end());
        return values[values.size() / 2];
    }

    std::map<std::string, std::vector<double>> times_;
};

} // namespace

int main() {
    const auto benches = bitlux::perf::EngineBench::all();
    for (const auto& bench : benches) {
        benchmark::RegisterBenchmark(("bare " + bench->name).c_str(),
                                     [&bench](benchmark::State& state) {
                                         for (auto iteration : state)
                                             bench->bare.send();
                                     });
        benchmark::RegisterBenchmark(("engine " + bench->name).c_str(),
                                     [&bench](benchmark::State& state) {
                                         for (auto iteration : state)
                                             bench->engine.SendSPI();
                                     });
    }
    std::string program = "perf_engine_time";
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    std::string repetitions = "--benchmark_repetitions=5";
    std::string time = "--benchmark_min_time=0.02";
    std::vector<char*> arguments{program.data(), interleave.data(), repetitions.data(), time.data(),
                                 nullptr};
    int count = static_cast<int>(arguments.size()) - 1;
    benchmark::Initialize(&count, arguments.data());
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print();
}
