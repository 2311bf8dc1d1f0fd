// Reading and validating the largest chip of the program.

#include "chips/chip_reader.h"
#include "chips/embedded_chips.h"
#include "platform/clock.h"

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace {

constexpr int repetitions = 31;
constexpr double limit = 5; // milliseconds

} // namespace

int main() {
    using namespace bitlux;
    const auto all = chips::embeddedChips();
    const auto largest =
        std::max_element(all.begin(), all.end(), [](const auto& one, const auto& other) {
            return one.text.size() < other.text.size();
        });
    const std::string file = fmt::format("{}.toml", largest->name);
    const SystemClock clock;
    std::vector<double> times;
    bool right = true;
    for (int n = 0; n < repetitions; ++n) {
        const std::int64_t start = clock.nanoseconds();
        right = chips::readChip(largest->text, file).chip != nullptr && right;
        times.push_back(static_cast<double>(clock.nanoseconds() - start) / 1e6);
    }
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    fmt::print("chips: {} of {} bytes read and validated in {:.2f} ms (limit {:.0f} ms){}\n",
               largest->name, largest->text.size(), median, limit,
               right ? "" : ", but it is wrong");
    return median <= limit && right ? 0 : 1;
}
