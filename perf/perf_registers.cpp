// A dump of all registers of the ZT72516 by name beside the same words sent bare, through a dongle
// that takes its time on the bus.

#include "bench/scripted_desk.h"
#include "panels/common/chip_exchange.h"
#include "program/program.h"
#include "registers/register_access.h"
#include "workbench/virtual_bench.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <vector>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int rounds = 5;
constexpr double ratioLimit = 1.2;

/// The processor's time of this thread, in nanoseconds.
std::int64_t processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

/// Nanoseconds of the shortest run.
struct Times {
    double all = 1e18;
    double processor = 1e18;
};

class Rig {
public:
    Rig() {
        bench_.dongle.plug();
        bench_.wireFor(program_.session());
        program_.Main();
    }

    [[nodiscard]] const RegisterCatalog& catalog() const { return catalog_; }
    void dump(std::vector<std::uint64_t>& words) {
        ChipExchange exchange(catalog_.chip().word, program_.session(), program_.engine(),
                              program_.pins());
        const RegisterAccess access(catalog_, [&](std::uint64_t word) {
            words.push_back(word);
            return exchange(word);
        });
        static_cast<void>(access.dump());
    }
    void sendBare(const std::vector<std::uint64_t>& words) {
        Session& session = program_.session();
        const ScopedValue length(session.SPIWordLength, std::int16_t{32});
        for (const std::uint64_t word : words) {
            session.WordToSend.resize(32);
            for (std::size_t bit = 0; bit < 32; ++bit)
                session.WordToSend[bit] = static_cast<std::int16_t>(word >> bit & 1);
            program_.engine().SendSPI();
        }
    }
    template <typename Action>
    void time(Times& best, const Action& action) {
        const std::int64_t start = clock_.nanoseconds();
        const std::int64_t processorStart = processorTime();
        action();
        best.all = std::min(best.all, static_cast<double>(clock_.nanoseconds() - start));
        best.processor =
            std::min(best.processor, static_cast<double>(processorTime() - processorStart));
    }
    [[nodiscard]] bool told() const { return !desk_.boxes.shown().empty(); }

private:
    PacedClock clock_;
    VirtualBench bench_{clock_, makeDevice("zt72516")};
    ScriptedDesk desk_{clock_};
    Program program_{bench_.hardware(), desk_.desk()};
    RegisterCatalog catalog_{chips::embeddedChip("zt72516")};
};

} // namespace

int main() {
    Rig rig;
    Times dump;
    Times bare;
    std::size_t count = 0;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::uint64_t> words;
        rig.time(dump, [&] { rig.dump(words); });
        rig.time(bare, [&] { rig.sendBare(words); });
        count = words.size();
    }
    const double ratio = dump.all / bare.all;
    const auto each = static_cast<double>(count) * 1000;
    fmt::print(
        "dump of the ZT72516: {} words take {:.3f} times as long as the words alone (at most "
        "{}); the processor has {:.1f} us a word and {:.1f} a bare one\n",
        count, ratio, ratioLimit, dump.processor / each, bare.processor / each);
    return ratio <= ratioLimit && !rig.told() && count > 0 ? 0 : 1;
}
