#include "platform/failure.h"
#include "support/test_bench.h"

#include <tuple>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr std::int64_t millisecond = 1'000'000;
constexpr const char* checkTheCable = "Check the USB cable and restart program";

/// The page of the ZT72517 in front, with the chip on the dongle.
struct PspiBench : TestBench {
    explicit PspiBench(WithDongle withDongle = WithDongle::Yes,
                       const std::vector<int>& parts = {72517}, int tab = 3)
        : TestBench("zt72517", {}, withDongle) {
        for (const int part : parts)
            get<forms::CheckBox>(fmt::format("frmConfigureSPI.CheckEnable{}", part)).setValue(1);
        program.dialog().cmdApply_Click();
        tabs().click(tab);
        loop.drive(program.forms());
    }

    forms::TabStrip& tabs() { return program.mainForm().tabs.TabStripMain; }
    zt72517::PspiPage& page() { return program.mainForm().pspi; }

    /// A user's click on any control of the page.
    void press(const std::string& control) {
        program.forms().control("frmMain." + control).click();
    }
    void turn(const char* flag, bool on = true) {
        dongle.chip()->turn(switchNamed(*dongle.chip(), flag), on);
    }
    void breakWith(const char* fault) { dongle.setFaults(DongleFaults({dongleFaultFrom(fault)})); }
    std::string reading(const std::string& name) {
        for (const Reading& one : dongle.chip()->readings())
            if (one.name == name)
                return one.value;
        return "no such reading";
    }

    /// The frames that `action` sends, of each the four bytes that may be other than 0.
    template <typename Action>
    std::string frames(Action action) {
        WireTrace trace;
        program.startRecording(trace);
        action();
        program.stopRecording();
        std::vector<std::string> all;
        for (const WireAccess& access : trace.accesses())
            if (access.kind == WireAccess::Kind::FrameOut)
                all.push_back(fmt::format(
                    "{:02X}", fmt::join(access.frame.begin(), access.frame.begin() + 4, " ")));
        return fmt::format("{}", fmt::join(all, ", "));
    }
    std::string framesOf(const std::string& control) {
        return frames([&] { press(control); });
    }
    std::string framesIn(std::int64_t duration) {
        return frames([&] {
            const std::int64_t end = clock.nanoseconds() + duration;
            while (clock.nanoseconds() < end)
                loop.waitForEvents(end - clock.nanoseconds());
        });
    }

    /// The row of bits, bit 7 first; the flags by their rows, 1 lit, 0 not, - not read.
    std::string bits() {
        std::string all;
        for (const auto& bit : page().bit_read)
            all.insert(0, bit->caption());
        return all;
    }
    std::string flags() {
        std::string all;
        for (const zt72517::FlagLine& line : page().flagLines) {
            for (const auto& flag : line.flags)
                all += flag->backColor() == 0x80000001   ? '1'
                       : flag->backColor() == 0x80000005 ? '0'
                                                         : '-';
            all += ' ';
        }
        return all;
    }
    std::string failure() {
        return fmt::format("{} {:X}", page().can_fail_text.caption(),
                           page().can_fail_text.backColor());
    }
    /// Which mode cannot be chosen, the lines set manually, and the session's variables.
    std::string state() {
        std::string all;
        for (const auto& button : page().mode)
            all += button->enabled() ? '.' : 'X';
        for (const auto* group : {&page().opt_nstb, &page().opt_en})
            all += (*group)(1).value() ? " 1" : " 0";
        return fmt::format("{} {} {}", all, session().PSPIMode, session().PSPIModeChange);
    }
    std::string options() {
        std::string all;
        for (const auto* box : {&page().crank_opt, &page().can_wu_opt, &page().nerr_opt})
            all += box->checked() ? '1' : '0';
        for (const auto& option : page().sr_opt)
            all += option->value() ? fmt::format(" {}", option->index().value()) : "";
        return all;
    }
    std::string refresh() {
        return fmt::format("{}{} {}", page().auto_opt(0).value() ? "ON" : "",
                           page().auto_opt(1).value() ? "OFF" : "",
                           page().timer_flag.enabled() ? "runs" : "stopped");
    }
};

constexpr const char* oneRefresh = "08 04 04 00, 08 04 04 1F, 08 04 04 40, 08 04 04 5F";

TEST(Zt72517Page, SendsOneFrameForEachButton) {
    PspiBench bench;
    for (const char* flag : {"CAN F", "BATFAIL", "SPIerr", "WILS", "CANF2", "Bus Dom", "VSUV"})
        bench.turn(flag);
    EXPECT_EQ(bench.state(), ".... 0 0 0 false");
    std::string flags = "----- --- ------ ------ ";
    for (const auto& [control, frames, bits, newFlags, state] :
         {std::tuple{"mode(2)", "08 04 03 00", "00000000", "", "..X. 1 1 3 false"},
          {"flag_line1_ref", "08 04 07 00", "00010001", "10001 --- ------ ------ ",
           "..X. 1 1 3 false"},
          {"flag_line2_ref", "08 04 07 1F", "00001010", "10001 101 ------ ------ ",
           "..X. 1 1 3 false"},
          {"flag_line3_ref", "08 04 07 40", "00100100", "10001 101 001001 ------ ",
           "..X. 1 1 3 false"},
          {"flag_line4_ref", "08 04 07 5F", "00000100", "10001 101 001001 001000 ",
           "..X. 1 1 3 false"},
          {"mode(3)", "08 04 02 00", "00000100", "", "...X 0 1 2 false"},
          {"mode(1)", "08 04 01 00", "00000100", "", ".X.. 1 0 1 false"},
          {"mode(0)", "08 04 00 00", "00000100", "", "X... 0 0 0 false"},
          {"opt_en(1)", "", "00000100", "", "X... 0 1 0 false"},
          {"opt_nstb(1)", "", "00000100", "", "X... 1 1 0 false"},
          {"opt_valid", "08 04 03 00", "00000100", "", "X... 1 1 3 false"},
          {"sr_opt(2)", "08 04 07 28", "00000100", "", "X... 1 1 3 false"},
          {"can_wu_opt", "08 04 07 2A", "00000100", "", "X... 1 1 3 false"},
          {"nerr_opt", "08 04 07 3A", "00000100", "", "X... 1 1 3 false"},
          {"crank_opt", "08 04 07 3B", "00000100", "", "X... 1 1 3 false"},
          {"send_pspi", "08 04 07 00", "00010001", "", "X... 1 1 3 false"}}) {
        EXPECT_EQ(bench.framesOf(control), frames) << control;
        EXPECT_EQ(bench.bits(), bits) << control;
        flags = *newFlags == '\0' ? flags : newFlags;
        EXPECT_EQ(bench.flags(), flags) << control;
        EXPECT_EQ(bench.state(), state) << control;
    }
    EXPECT_EQ(bench.reading("Mode"), "Normal Mode");
    EXPECT_EQ(bench.reading("Configuration"), "3B");
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{});
}

TEST(Zt72517Page, SendsAFreeByteAndTheTopPin) {
    PspiBench bench;
    bench.session().USBExtraPins1 = 1;
    bench.press("crank_opt");
    bench.edit("frmMain.byte_to_send", "a53");
    EXPECT_EQ(bench.framesOf("send_pspi"), "88 04 04 A5");
    EXPECT_EQ(bench.session().PSPIReply, 0x21) << "its configuration";
    EXPECT_EQ(bench.bits(), "00100001");
    bench.edit("frmMain.byte_to_send", "7");
    EXPECT_EQ(bench.frames([&] { bench.page().byte_to_send.key(forms::KeyCode::Enter); }),
              "88 04 04 07");
    for (const char* text : {"", "G0", "0x1F", "-1", " 1"}) {
        bench.edit("frmMain.byte_to_send", text);
        EXPECT_EQ(bench.framesOf("send_pspi"), "") << text;
        EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{"Not a valid hex number!"});
    }
    EXPECT_EQ(bench.page().Label2(0).caption() + bench.page().refresh_aff.caption(), "ms500");
}

TEST(Zt72517Page, ReportsFaultsOfTheBus) {
    PspiBench bench;
    const std::vector<std::string> texts{"No CAN BUS failure 8000000F", "CANL short to gnd FF",
                                         "CANL short to Vdd FF",        "CANL short to Vbat FF",
                                         "??CAN BUS failure?? FF",      "CANH short to gnd FF",
                                         "CANH short to Vdd FF",        "CANH short to Vbat FF"};
    for (std::size_t code = 0; code < texts.size(); ++code) {
        for (std::size_t bit = 0; bit < 3; ++bit)
            bench.turn(fmt::format("CANF{}", bit).c_str(), (code >> bit & 1) != 0);
        bench.press("flag_line3_ref");
        EXPECT_EQ(bench.failure(), texts[code]);
    }
    // What colours a row is what the bits show.
    forms::Form& form = bench.program.mainForm();
    form.call("ShowPSPIBits", 0x0E);
    form.call("decod_flag", 0, 2);
    EXPECT_EQ(bench.flags(), "----- 111 111000 ------ ");
    EXPECT_THROW(form.call("decod_flag", 0, 5), Failure);
}

TEST(Zt72517Page, RefreshesTheFlagsAsLongAsItsTabIsThird) {
    PspiBench bench;
    EXPECT_EQ(bench.refresh(), "OFF stopped");
    bench.turn("VSOV");
    bench.press("auto_opt(0)");
    EXPECT_EQ(bench.framesIn(550 * millisecond), oneRefresh);
    EXPECT_EQ(bench.flags(), "00000 000 000000 000100 ");
    bench.page().HScroll1.move(100);
    EXPECT_EQ(bench.page().refresh_aff.caption(), "100");
    EXPECT_EQ(bench.framesIn(150 * millisecond), oneRefresh);
    bench.tabs().click(1);
    EXPECT_EQ(bench.framesIn(3'000 * millisecond), "");
    EXPECT_EQ(bench.refresh(), "ON runs");
    bench.page().auto_opt(1).setValue(true); // acts on its own tab alone
    EXPECT_EQ(bench.refresh(), "OFF runs");
    bench.tabs().click(3);
    bench.page().auto_opt(0).setValue(true);
    bench.press("auto_opt(1)");
    EXPECT_EQ(bench.refresh(), "OFF stopped");

    PspiBench behind(TestBench::WithDongle::Yes, {72361, 72517}, 4);
    behind.press("auto_opt(0)");
    EXPECT_EQ(behind.refresh(), "ON runs");
    EXPECT_EQ(behind.framesIn(3'000 * millisecond), "");
}

TEST(Zt72517Page, ShowsItsMessageOnceWhenTheDongleDoesNotAnswer) {
    for (const char* fault : {"silent@3", "gone@3"}) {
        PspiBench bench;
        bench.turn("CAN F");
        bench.press("mode(2)");
        bench.press("auto_opt(0)");
        bench.breakWith(fault); // in the middle of the first refresh
        EXPECT_EQ(bench.framesIn(4'000 * millisecond), "08 04 07 00, 08 04 07 1F, 08 04 07 40")
            << fault;
        EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{checkTheCable}) << fault;
        EXPECT_EQ(bench.flags(), "10000 000 ------ ------ ") << "as they were, " << fault;
        EXPECT_EQ(bench.refresh(), "OFF stopped");
        EXPECT_TRUE(bench.session().LinkFailed);
    }
    // The time-out of another command frame; no panel comes of it.
    PspiBench bench;
    bench.press("auto_opt(0)");
    bench.breakWith("silent");
    EXPECT_EQ(bench.frames([&] { bench.program.mainForm().call("Send72516WatchdogCmd"); }),
              "00 16 00 00");
    EXPECT_EQ(bench.refresh(), "OFF stopped");
    EXPECT_EQ(bench.program.panels().find("zt72518"), nullptr);
}

TEST(Zt72517Page, KeepsAChangeUntilItIsAnswered) {
    PspiBench bench;
    bench.breakWith("silent@1");
    EXPECT_EQ(bench.framesOf("mode(1)"), "08 04 01 00");
    EXPECT_EQ(bench.state(), ".X.. 1 0 1 true");
    EXPECT_EQ(bench.framesOf("flag_line1_ref"), "08 04 01 00") << "the change goes along";
    EXPECT_EQ(bench.state(), ".X.. 1 0 1 true");
    EXPECT_EQ(bench.framesOf("opt_valid"), "08 04 01 00");
    EXPECT_EQ(bench.framesOf("flag_line1_ref"), "08 04 05 00");
}

TEST(Zt72517Page, ChangesNothingWithoutADongle) {
    PspiBench bench(TestBench::WithDongle::No);
    bench.edit("frmMain.byte_to_send", "no");
    for (const char* control :
         {"mode(2)", "opt_valid", "sr_opt(2)", "crank_opt", "can_wu_opt", "nerr_opt", "send_pspi",
          "flag_line1_ref", "flag_line2_ref", "flag_line3_ref", "flag_line4_ref"})
        EXPECT_EQ(bench.framesOf(control), "") << control;
    for (const char* procedure : {"SendPSPI", "chg_state", "slr_opt", "timer_flag_Timer"})
        bench.program.mainForm().call(procedure);
    EXPECT_EQ(bench.state(), ".... 0 0 0 false");
    EXPECT_EQ(bench.options(), "000 0");
    EXPECT_EQ(bench.flags(), "----- --- ------ ------ ");
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{});
}

TEST(Zt72517Page, LeavesOutWhatComesWhileAFrameWaits) {
    PspiBench bench;
    bench.press("nerr_opt");
    bench.press("auto_opt(0)");
    bench.breakWith("late:450@1"); // longer than the wait for the next tick
    bench.clock.spend(400 * millisecond);
    bench.loop.atTurn(3, [&] {
        for (const char* control : {"mode(1)", "crank_opt", "sr_opt(1)", "opt_valid", "send_pspi"})
            bench.press(control);
        EXPECT_EQ(bench.options(), "001 1") << "as the frame on its way has them";
    });
    EXPECT_EQ(bench.framesOf("sr_opt(1)"), "08 04 04 34");
    EXPECT_EQ(bench.state(), ".... 0 0 0 false");
    EXPECT_EQ(bench.session().PSPIReply, 0x34);
    EXPECT_EQ(bench.refresh(), "ON runs");
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{});

    // The program may end in the wait.
    bench.breakWith("late:450@1");
    bench.loop.atTurn(3, [&] { bench.program.end(); });
    EXPECT_EQ(bench.framesOf("flag_line1_ref"), "08 04 04 00");
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{});
}

TEST(Zt72517Page, LeavesTheWordOfTheFirstPageAlone) {
    PspiBench bench;
    bench.tabs().click(1);
    bench.press("cmdSI_single(0)");
    bench.press("cmdSI_single(5)");
    bench.tabs().click(3);
    EXPECT_EQ(bench.framesOf("sr_opt(2)"), "08 04 04 28");
    EXPECT_EQ(bench.framesOf("mode(1)"), "08 04 01 01") << "no byte for the chip";
    bench.breakWith("late:100@1");
    bench.loop.atTurn(2, [&] {
        bench.tabs().click(1);
        EXPECT_EQ(bench.framesOf("cmdSendOnce"), "08 73 00 21");
    });
    bench.press("flag_line4_ref");
    EXPECT_EQ(bench.framesOf("cmdSendOnce"), "08 73 00 21");
}

TEST(Zt72517Page, IsKnownToScripts) {
    PspiBench bench;
    forms::Form& form = bench.program.mainForm();
    EXPECT_EQ(bench.frames([&] {
        bench.session().SingleWordBits.at(0) = 0x5F;
        form.call("SendPSPI");
    }),
              "08 04 04 5F");
    EXPECT_TRUE(bench.session().USBReadDone);
    bench.session().PSPIMode = 2;
    EXPECT_EQ(bench.frames([&] { form.call("chg_state"); }), "08 04 02 5F");
    EXPECT_FALSE(bench.session().USBReadDone);
    EXPECT_EQ(bench.frames([&] { form.call("mode_Click", 2); }), "08 04 03 5F");
    bench.session().SingleWordBits.at(0) = 300;
    EXPECT_THROW(form.call("SendPSPI"), Failure);
}

} // namespace
} // namespace bitlux::test
