#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

constexpr const char* checkTheCable = "Check the USB cable and restart program";

struct WatchdogBench : PanelBench {
    zt72518::Watchdog& watchdog() { return panel().part<zt72518::Watchdog>(); }
    std::string after(int button) {
        sent();
        press(fmt::format("watchdog({})", button));
        return sent();
    }
    std::string state() {
        const forms::Label& label = watchdog().wd_aff(1);
        return fmt::format("{} {:X}", label.caption(), label.backColor());
    }
    void configure() {
        watchdog().wd_config(0).select(3);
        watchdog().wd_config(1).select(7);
        watchdog().wd_config(2).select(8);
        watchdog().wd_current_time.move(77);
    }
};

TEST(Watchdog, StartsAndStopsByItsButtons) {
    WatchdogBench bench;
    EXPECT_EQ(bench.watchdog().wd_aff(0).caption(), "TH = 5 ms");
    EXPECT_EQ(bench.watchdog().wd_config(0).text() + bench.watchdog().wd_config(1).text() +
                  bench.watchdog().wd_config(2).text(),
              "WatchDog modeWatchDog timerWatchDog TL");
    for (const int button : {0, 4, 8})
        EXPECT_EQ(bench.after(button), "") << button;
    EXPECT_EQ(bench.boxes.takeTexts(),
              (Texts{"Please configure WatchDog", "Please configure WatchDog Current",
                     "Please configure WatchDog Current"}));
    EXPECT_EQ(bench.state(), "Watch Dog is OFF 8000000F");
    EXPECT_EQ(bench.sequence(), "");

    bench.configure();
    EXPECT_EQ(bench.watchdog().wd_aff(0).caption(), "TH = 77 ms");
    EXPECT_EQ(bench.after(0), "<00 15 00 0B 07 00 00 00>");
    EXPECT_EQ(bench.state(), "Watch Dog is ON FF");
    EXPECT_EQ(bench.after(2), "<00 15 00 20 00 00 00 00>");
    EXPECT_EQ(bench.state(), "Watch Dog is OFF 8000000F");
    EXPECT_EQ(bench.after(4), "<00 45 00 10 00 4D 08 00>");
    EXPECT_EQ(bench.after(6), "<00 45 00 00 00 00 00 00>");
    EXPECT_EQ(bench.after(1), "");
    EXPECT_EQ(bench.sequence(), "Enhanced 4=500ms");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

TEST(Watchdog, SendsTheRequestThatCountsMost) {
    WatchdogBench bench;
    bench.configure();
    Session& session = bench.session();
    session.WdStopRequest = true;
    session.WdConfigRequest = true;
    session.WdSequenceRequest = true;
    session.WdSequenceMode = 1;
    session.WdSequenceTime = 2;
    bench.sent();
    bench.panel().call("send_wd");
    EXPECT_EQ(bench.sent(), "<00 15 00 09 02 00 00 00>");
    EXPECT_EQ(bench.state(), "Watch Dog is ON FF");
    session.WdStopRequest = true;
    session.WdConfigRequest = true;
    bench.panel().call("send_wd");
    EXPECT_EQ(bench.sent(), "<00 15 00 20 00 00 00 00>");
    EXPECT_FALSE(session.WdStopRequest || session.WdConfigRequest);
    session.WdStopRequest = true;
    bench.session().USBReady = false;
    bench.panel().call("send_wd");
    EXPECT_TRUE(session.WdStopRequest) << "nothing happens without a dongle";
    bench.panel().call("send_wd_current");
    EXPECT_EQ(bench.sent(), "");
    bench.session().USBReady = true;
    bench.program.forms().unload("ZT72518");
    bench.program.mainForm().call("send_wd");
    EXPECT_EQ(bench.sent(), "<00 15 00 20 00 00 00 00>") << "also when the panel was closed";

    bench.fill({{"Simple WD", "2ms"}, {"Simple WD", "5s"}, {"Simple WD", "6s"}});
    for (const auto& [line, time] : {std::pair{1, 1}, {2, 9}, {3, 9}}) {
        bench.panel().call("decod_wd_time", line);
        EXPECT_EQ(session.WdSequenceTime, time);
    }
}

TEST(Watchdog, EndsTheAutomaticReadsWhenTheDongleDoesNotAnswer) {
    WatchdogBench bench;
    bench.configure();
    bench.tick("read_auto(41)");
    bench.tick("read_auto(34)");
    bench.dongle.setFaults(DongleFaults({dongleFaultFrom("silent")}));
    bench.after(0);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{checkTheCable});
    EXPECT_TRUE(bench.session().LinkFailed);
    EXPECT_FALSE(bench.panel().part<AutoReads>().timer.enabled());
    for (int box = 0; box <= 34; ++box)
        EXPECT_FALSE(bench.panel().part<AutoReads>().boxes(box).checked()) << box;
}

TEST(Watchdog, OfEveryPanelTellsThatTheDongleServesItNoMore) {
    for (const auto& [form, prepare, start, stop] :
         {std::tuple{"ZT72518", "wd_config(0)=0 wd_config(1)=0", "watchdog(0)", "watchdog(2)"},
          {"ZT72516", "Check_UseSpiDongleForWD Watchdog_Mode=0 Watchdog_Timing=0",
           "Btn_Start_Watchdog", "Btn_Stop_Watchdog"},
          {"ZT72537", "", "wd_en(0)", "wd_en(0)"},
          {"ZT72361", "", "OptWdEn(1)", "OptWdEn(0)"}}) {
        SCOPED_TRACE(form);
        PanelBench bench("echo", {}, form);
        const auto note = [&bench]() -> std::string {
            const auto& label = bench.on<forms::Label>("WatchdogDongle");
            return label.visible() ? label.caption() : "";
        };
        bench.effectsOf(prepare);
        bench.effectsOf(start);
        EXPECT_EQ(note(), "");
        bench.program.dongle().checkPresence();
        EXPECT_EQ(note(), "");
        bench.dongle.unplug();
        bench.program.dongle().checkPresence();
        EXPECT_EQ(note(), "The dongle that served it is gone");
        bench.dongle.plug();
        bench.program.dongle().read_rstint(); // any frame looks for it
        EXPECT_EQ(note(), "The dongle serves it no more: start it again");
        bench.effectsOf(stop);
        EXPECT_EQ(note(), "");
        bench.effectsOf(start);
        EXPECT_EQ(note(), "");
        bench.dongle.setFaults(DongleFaults({dongleFaultFrom("gone")}));
        bench.program.dongle().read_rstint();
        EXPECT_EQ(note(), "The dongle that served it is gone");
        bench.dongle.setFaults(DongleFaults());
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{checkTheCable});
    }
}

} // namespace
} // namespace bitlux::test
