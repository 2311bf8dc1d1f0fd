// A sequence of 200 lines of each chip beside the same words sent bare, and what automatic reading
// of all registers takes of a processor's time, through a dongle that takes its time on the bus.

#include "bench/scripted_desk.h"
#include "panels/common/auto_reads.h"
#include "panels/common/panel_form.h"
#include "panels/zt72518/chip_words.h"
#include "program/program.h"
#include "workbench/virtual_bench.h"

#include <algorithm>
#include <cstdint>
#include <ctime>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int lines = 200;
constexpr int rounds = 3;
constexpr double ratioLimit = 1.2;
constexpr double shareLimit = 5; // percent
constexpr double tick = 500e6;   // nanoseconds between two automatic readings

/// The processor's time of this thread, in nanoseconds.
std::int64_t processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

/// Nanoseconds.
struct Times {
    double all = 0;
    double processor = 0;
};

/// What nothing else on the machine has disturbed.
Times shorter(const Times& one, const Times& other) {
    return {.all = std::min(one.all, other.all),
            .processor = std::min(one.processor, other.processor)};
}

class Rig {
public:
    /// With the panel of a chip, and lines that write one of its registers.
    Rig(const char* chip, const char* form, const char* write) : chip_(chip) {
        bench_.dongle.plug();
        bench_.wireFor(program_.session());
        program_.Main();
        program_.forms().show(form); // which sets the shape of words
        for (int line = 0; line < lines; ++line)
            panel().sequence.lists.append(write, fmt::format("{:X}", line));
    }

    Times sequence() {
        return timesOf([this] { panel().sequence.player.Cm_Run_Seq_Click(); });
    }
    /// The words alone, each sent by `send`.
    template <typename Send>
    Times bare(const Send& send) {
        return timesOf([&] {
            for (int line = 0; line < lines; ++line)
                send(panel(), line);
        });
    }
    /// The readings of one tick.
    Times reading() {
        auto& reads = panel().part<AutoReads>();
        for (int box = 0; box <= 36; ++box)
            reads.boxes(box).setValue(1);
        reads.timer.enable();
        return timesOf([this] { panel().call("timer_auto_Timer"); });
    }
    [[nodiscard]] bool told() const { return !desk_.boxes.shown().empty(); }

private:
    PanelForm& panel() { return program_.panels().touch(chip_); }
    template <typename Action>
    Times timesOf(const Action& action) {
        const std::int64_t start = clock_.nanoseconds();
        const std::int64_t processorStart = processorTime();
        action();
        return {.all = static_cast<double>(clock_.nanoseconds() - start),
                .processor = static_cast<double>(processorTime() - processorStart)};
    }
    const char* const chip_;
    PacedClock clock_;
    VirtualBench bench_{clock_, makeDevice("echo")};
    ScriptedDesk desk_{clock_};
    Program program_{bench_.hardware(), desk_.desk()};
};

/// Whether a sequence keeps to its limit; no box may take the place of the work.
template <typename Send>
bool sequenceKeepsUp(Rig& rig, const char* chip, const Send& send) {
    Times sequence = rig.sequence();
    Times bare = rig.bare(send);
    for (int round = 1; round < rounds; ++round) {
        sequence = shorter(sequence, rig.sequence());
        bare = shorter(bare, rig.bare(send));
    }
    const double ratio = sequence.all / bare.all;
    fmt::print(
        "sequence of the {}: {} lines take {:.3f} times as long as their words alone, "
        "{:.2f} ms each (at most {}); the processor has {:.1f} us a line and {:.1f} a word\n",
        chip, lines, ratio, bare.all / lines / 1e6, ratioLimit, sequence.processor / lines / 1000,
        bare.processor / lines / 1000);
    return ratio <= ratioLimit && !rig.told();
}

bool readsLightly(Rig& rig) {
    Times reading = rig.reading();
    for (int round = 1; round < rounds; ++round)
        reading = shorter(reading, rig.reading());
    const double share = 100 * reading.processor / tick;
    fmt::print("automatic reading of all registers keeps a processor busy for {:.2f} ms of 500, "
               "{:.2f} % (at most {}); it takes {:.0f} ms\n",
               reading.processor / 1e6, share, shareLimit, reading.all / 1e6);
    return share <= shareLimit && !rig.told();
}

} // namespace

int main() {
    Rig family("zt72518", "ZT72518", "MUX Write");
    Rig wide("zt72516", "ZT72516", "Init Reg Write");
    bool right = sequenceKeepsUp(family, "ZT7251x family", [](PanelForm& panel, int line) {
        panel.part<zt72518::ChipWords>().send(64, static_cast<std::uint8_t>(line));
    });
    right = sequenceKeepsUp(wide, "ZT72516",
                            [](PanelForm& panel, int line) {
                                panel.words.send(0x43000000 + static_cast<std::uint64_t>(line));
                            }) &&
            right;
    right = readsLightly(family) && right;
    return right ? 0 : 1;
}
