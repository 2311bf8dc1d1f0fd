// Time for a word: the engine against the bare loop. Repetitions of both are interleaved, so that
// the ratio of their medians holds while the machine's speed drifts.

#include "engine_bench.h"

#include <algorithm>
#include <map>

#include <benchmark/benchmark.h>

namespace {

constexpr double limit = 1.25;

class RatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
    }

    /// False when a ratio is beyond the limit.
    bool print() {
        bool good = true;
        for (auto& [name, times] : times_) {
            if (!name.starts_with("engine "))
                continue;
            const std::string shape = name.substr(name.find(' ') + 1);
            const double engine = median(times);
            const double bare = median(times_.at("bare " + shape));
            fmt::print("time   {}: engine {:6.1f} ns, bare {:6.1f} ns, ratio {:.2f} (limit {})\n",
                       shape, engine, bare, engine / bare, limit);
            good &= engine <= limit * bare;
        }
        return good;
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
    std::string repetitions = "--benchmark_repetitions=15";
    std::string time = "--benchmark_min_time=0.02";
    std::vector<char*> arguments{program.data(), interleave.data(), repetitions.data(), time.data(),
                                 nullptr};
    int count = static_cast<int>(arguments.size()) - 1;
    benchmark::Initialize(&count, arguments.data());
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.print() ? 0 : 1;
}
