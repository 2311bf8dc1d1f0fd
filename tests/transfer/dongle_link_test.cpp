#include "bench/scripted_desk.h"
#include "bench/simulated_dongle.h"
#include "support/rows.h"
#include "transfer/dongle_frame.h"
#include "transfer/dongle_link.h"

#include <functional>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

constexpr std::int64_t millisecond = 1'000'000;
constexpr const char* checkTheCable = "Check the USB cable and restart program";

struct Interrupted {};

/// A clock on which a wait can be interrupted.
class InterruptibleClock : public VirtualClock {
public:
    void idle(std::int64_t duration) override {
        if (std::exchange(interrupts, false))
            throw Interrupted{};
        VirtualClock::idle(duration);
    }
    bool interrupts = false;
};

/// A link to a dongle with nothing wrong and a loop on its lines, open and set up.
struct LinkRig {
    Session session;
    InterruptibleClock clock;
    SimulatedDongle dongle{clock, makeDevice("loopback")};
    ScriptedBoxes boxes;
    DongleLink link{session, dongle, clock, boxes};
    WireTrace trace;
    int failures = 0;

    LinkRig() {
        link.failed.subscribe([this] { ++failures; });
        dongle.plug();
        connect();
        link.startRecording(trace, clock);
    }

    void connect() {
        EXPECT_EQ(link.search(), DongleLink::Found::Opened);
        link.setUpPipes();
        session.USBReady = true;
    }
    void breakWith(const char* fault) { dongle.setFaults(DongleFaults({dongleFaultFrom(fault)})); }
    /// Exchanges a word of eight bits; its answer, or what went wrong.
    std::string word(std::uint8_t data) {
        UsbFrame answer{};
        if (!link.exchange({8, 0x70, 0, data}, answer, DongleLink::Wait::Unlimited))
            return fmt::format("{}", fmt::join(boxes.takeTexts(), ", "));
        return fmt::format("{:02X}", answer[3]);
    }
    bool command(std::uint8_t number) {
        UsbFrame answer{};
        return link.exchange(commandFrame(number), answer, DongleLink::Wait::Limited) &&
               answer[1] == number;
    }
    std::string takeTrace() {
        std::string lines;
        for (const WireAccess& access : trace.accesses())
            lines += trace.line(access) + "\n";
        trace.clear();
        return lines;
    }
};

TEST(DongleLink, NeverTakesTheAnswerOfAnInterruptedWaitForAnother) {
    LinkRig rig;
    rig.breakWith("late:100");
    rig.clock.interrupts = true;
    EXPECT_THROW(rig.word(0xA5), Interrupted);
    rig.dongle.setFaults(DongleFaults{});
    EXPECT_EQ(rig.word(0x3C), "3C");
}

TEST(DongleLink, SendsOneFrameAndReadsOne) {
    LinkRig rig;
    EXPECT_EQ(rig.word(0xA5), "A5");
    EXPECT_TRUE(rig.command(22));
    EXPECT_EQ(rig.takeTrace(), "0 OUT 08 70 00 A5 00 00 00 00\n"
                               "2008000 IN 08 70 00 A5 00 00 00 00\n"
                               "2008000 OUT 00 16 00 00 00 00 00 00\n"
                               "4008000 IN 00 16 00 00 00 00 00 00\n");
    EXPECT_FALSE(rig.session.USBReadDone);
    EXPECT_EQ(rig.failures, 0);
}

TEST(DongleLink, WaitsForACommandHalfASecond) {
    LinkRig rig;
    rig.breakWith("late:498"); // and 2 ms for the frames
    EXPECT_TRUE(rig.command(22));
    EXPECT_FALSE(rig.session.LinkFailed);
    rig.breakWith("late:499");
    EXPECT_FALSE(rig.command(22));
    EXPECT_TRUE(rig.session.LinkFailed);
    EXPECT_FALSE(rig.session.USBReadDone);
    EXPECT_EQ(rig.boxes.takeTexts(), (std::vector<std::string>{checkTheCable}));
    EXPECT_EQ(rig.failures, 1);
}

TEST(DongleLink, NeverTakesALateAnswerForAnother) {
    // The answer of the command is there already, or comes while it is waited for, or, as the
    // dongle was reset, never.
    for (const char* fault : {"late:600@1", "late:1900@1", "late:9000@1", "silent@1"}) {
        for (const std::int64_t pause : {0, 700, 3000}) {
            LinkRig rig;
            rig.breakWith(fault);
            EXPECT_FALSE(rig.command(22)) << fault;
            rig.clock.idle(pause * millisecond);
            EXPECT_EQ(rig.word(0x11), "11") << fault << " " << pause;
            rig.clock.idle(10'000 * millisecond);
            EXPECT_EQ(rig.word(0x22), "22") << fault << " " << pause;
            EXPECT_EQ(rig.failures, 1) << fault << " " << pause;
        }
    }
}

TEST(DongleLink, FailsWhereNoAnswerCanCome) {
    for (const char* fault : {"gone", "stalled", "short:5", "short:0"}) {
        LinkRig rig;
        EXPECT_EQ(rig.word(0x11), "11");
        rig.breakWith(fault);
        EXPECT_EQ(rig.word(0x22), checkTheCable) << fault;
        EXPECT_TRUE(rig.session.LinkFailed) << fault;
        EXPECT_EQ(rig.failures, 1) << fault;
        rig.breakWith("silent@9");
        rig.dongle.plug();
        rig.connect();
        EXPECT_EQ(rig.word(0x33), "33") << fault;
    }
}

TEST(DongleLink, GivesUpADongleThatSendsFramesWithoutEnd) {
    LinkRig rig;
    rig.breakWith("babbling@2");
    EXPECT_EQ(rig.word(0x11), "11");
    EXPECT_EQ(rig.word(0x22), "22");
    EXPECT_EQ(rig.word(0x33), checkTheCable) << "it would pass for an answer";
    EXPECT_EQ(rig.takeTrace().find("OUT 08 70 00 33"), std::string::npos);
    rig.dongle.unplug();
    rig.dongle.plug();
    EXPECT_EQ(rig.word(0x44), "44");
}

TEST(DongleLink, FindsADongleAgainThatWasGone) {
    LinkRig rig;
    rig.breakWith("gone:500@1");
    EXPECT_EQ(rig.word(0x11), checkTheCable);
    EXPECT_EQ(rig.word(0x11), checkTheCable);
    rig.takeTrace();
    rig.clock.idle(500 * millisecond);
    EXPECT_EQ(rig.word(0x11), "11") << "the next word looks for it";
    EXPECT_FALSE(rig.session.LinkFailed);
    rig.dongle.unplug();
    rig.dongle.plug();
    EXPECT_EQ(rig.word(0x22), "22") << "nothing was lost between two words";
    EXPECT_EQ(rig.failures, 2);
    rig.dongle.unplug();
    EXPECT_EQ(rig.link.search(), DongleLink::Found::None);
    EXPECT_EQ(rig.word(0x11), checkTheCable);
    rig.dongle.plug();
    rig.connect();
    rig.link.close();
    EXPECT_EQ(rig.word(0x11), checkTheCable);
}

TEST(DongleLink, SamplesTheLinesOfTheChip) {
    for (const auto& [interrupt, reset] : {row(false, false), row(true, false), row(false, true)}) {
        LinkRig rig;
        rig.dongle.setLines(interrupt, reset);
        rig.link.read_rstint();
        EXPECT_EQ(rig.session.InterruptSeen, interrupt);
        EXPECT_EQ(rig.session.ResetSeen, reset);
        EXPECT_EQ(rig.takeTrace().substr(0, 30), "0 OUT 00 05 00 00 00 00 00 00\n");
    }
    LinkRig rig;
    rig.session.USBReady = false;
    rig.session.InterruptSeen = true;
    rig.link.read_rstint();
    EXPECT_TRUE(rig.session.InterruptSeen);
    EXPECT_EQ(rig.takeTrace(), "");
}

TEST(DongleLink, WaitsForTheAnswerToACommandAsItsCallerWants) {
    LinkRig rig;
    const UsbFrame frame{0, 0x25, 0, 0x27, 0xFE, 0x64};
    UsbFrame answer{};
    rig.breakWith("late:7200000");
    EXPECT_TRUE(rig.link.exchange(frame, answer, DongleLink::Wait::Unlimited));
    EXPECT_EQ(rig.takeTrace().substr(0, 30), "0 OUT 00 25 00 27 FE 64 00 00\n");

    for (const char* fault : {"silent@1", "gone"}) {
        rig.connect();
        rig.breakWith(fault);
        EXPECT_FALSE(rig.link.exchange(frame, answer, DongleLink::Wait::Quiet)) << fault;
        EXPECT_EQ(rig.failures, 0) << fault;
        EXPECT_EQ(rig.boxes.takeTexts(), std::vector<std::string>{}) << fault;
    }
}

/// A frame whose answer comes late, and what a handler does in the second turn of its wait.
struct TurningRig : LinkRig {
    ScriptedLoop loop{clock};

    std::string send(const char* fault, std::function<void()> handler, std::uint8_t data = 0xA5) {
        breakWith(fault);
        loop.atTurn(2, std::move(handler));
        UsbFrame answer{};
        const bool answered = link.exchangeInTurns({8, 0x70, 0, data}, answer, loop);
        breakWith("silent@9");
        return answered ? fmt::format("{:02X}", answer[3]) : "none";
    }
};

TEST(DongleLink, LetsNoFrameOfAHandlerComeBetweenAnotherAndItsAnswer) {
    TurningRig rig;
    std::string inner;
    const auto sendInner = [&] { inner = rig.word(0x3C); };
    EXPECT_EQ(rig.send("late:100@1", sendInner), "A5");
    EXPECT_EQ(inner, "3C");
    EXPECT_EQ(rig.takeTrace(), "0 OUT 08 70 00 A5 00 00 00 00\n"
                               "102008000 IN 08 70 00 A5 00 00 00 00\n"
                               "102008000 OUT 08 70 00 3C 00 00 00 00\n"
                               "104016000 IN 08 70 00 3C 00 00 00 00\n");
    inner.clear(); // another such wait in the middle of the first
    const auto waitInTurns = [&] {
        inner = rig.send(
            "late:100@1", [] {}, 0x3C);
    };
    EXPECT_EQ(rig.send("late:100@1", waitInTurns), "A5");
    EXPECT_EQ(inner, "3C");
    EXPECT_EQ(rig.failures, 0);

    EXPECT_EQ(rig.send("late:600@1", sendInner), "none");
    EXPECT_EQ(inner, "3C") << "after the answer that came too late";
    EXPECT_EQ(rig.boxes.takeTexts(), std::vector<std::string>{checkTheCable});
    EXPECT_EQ(rig.failures, 1);
}

TEST(DongleLink, SurvivesWhatHandlersDoWhileAFrameWaits) {
    using Act = std::function<void(TurningRig&)>;
    for (const auto& [handler, act, answer, failures] : Rows<const char*, Act, const char*, int>{
             {"lasts", [](TurningRig& rig) { rig.clock.idle(9'000 * millisecond); }, "A5",
              0}, // it has come meanwhile
             {"searches", [](TurningRig& rig) { rig.connect(); }, "A5", 0},
             {"unplugs", [](TurningRig& rig) { rig.dongle.unplug(); }, "none", 1},
             {"closes", [](TurningRig& rig) { rig.link.close(); }, "none", 0}}) {
        TurningRig rig;
        EXPECT_EQ(rig.send("late:100@1", [&rig, does = act] { does(rig); }), answer) << handler;
        EXPECT_EQ(rig.failures, failures) << handler;
        rig.dongle.plug();
        rig.connect();
        EXPECT_EQ(rig.word(0x3C), "3C") << handler;
    }
    TurningRig rig;
    EXPECT_THROW(rig.send("late:100@1", [] { throw Interrupted{}; }), Interrupted);
    rig.breakWith("silent@9");
    EXPECT_EQ(rig.word(0x3C), "3C") << "the answer to the interrupted frame came first";
}

} // namespace

} // namespace bitlux::test
