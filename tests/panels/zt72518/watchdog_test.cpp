#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

constexpr const char* configure = "wd_config(0)=3 wd_config(1)=7 wd_config(2)=8 wd_current_time=77";
constexpr const char* on = "wd_aff(1):Watch Dog is ON;wd_aff(1)#FF";
constexpr const char* off = "wd_aff(1):Watch Dog is OFF;wd_aff(1)#8000000F";

TEST(Watchdog, StartsAndStopsByItsButtons) {
    PanelBench bench;
    for (const auto& [list, prompt] :
         {std::pair{0, "WatchDog mode"}, {1, "WatchDog timer"}, {2, "WatchDog TL"}})
        EXPECT_EQ(bench.on<forms::ComboBox>(fmt::format("wd_config({})", list)).text(), prompt);
    bench.expect("wd_aff(0):TH = 5 ms");
    bench.walk(std::initializer_list<PanelStep>{
        {"watchdog(0)", "[Please configure WatchDog]", off},
        {"watchdog(4)", "[Please configure WatchDog Current]"},
        {"watchdog(8)", "[Please configure WatchDog Current]"},
        {configure, "", "wd_aff(0):TH = 77 ms"},
        {"watchdog(0)", "<00 15 00 0B 07 00 00 00>", on},
        {"watchdog(2)", "<00 15 00 20 00 00 00 00>", off},
        {"watchdog(4)", "<00 45 00 10 00 4D 08 00>"},
        {"watchdog(6)", "<00 45 00 00 00 00 00 00>"},
        {"watchdog(1)", "+Enhanced 4=500ms"},
    });
}

TEST(Watchdog, SendsTheRequestThatCountsMost) {
    PanelBench bench;
    bench.work(configure);
    Session& session = bench.session();
    session.WdStopRequest = true;
    session.WdConfigRequest = true;
    session.WdSequenceRequest = true;
    session.WdSequenceMode = 1;
    session.WdSequenceTime = 2;
    const auto send = [&] { bench.panel().call("send_wd"); };
    EXPECT_EQ(bench.effects(send), "<00 15 00 09 02 00 00 00>");
    bench.expect(on);
    session.WdStopRequest = true;
    session.WdConfigRequest = true;
    EXPECT_EQ(bench.effects(send), "<00 15 00 20 00 00 00 00>");
    EXPECT_FALSE(session.WdStopRequest || session.WdConfigRequest);
    session.WdStopRequest = true;
    bench.session().USBReady = false;
    send();
    EXPECT_TRUE(session.WdStopRequest) << "nothing happens without a dongle";
    bench.panel().call("send_wd_current");
    EXPECT_EQ(bench.sent(), "");
    bench.session().USBReady = true;
    bench.program.forms().unload("ZT72518");
    bench.program.mainForm().call("send_wd");
    EXPECT_EQ(bench.sent(), "<00 15 00 20 00 00 00 00>") << "also when the panel was closed";

    bench.fill("Simple WD=2ms;Simple WD=5s;Simple WD=6s");
    for (const auto& [line, time] : {std::pair{1, 1}, {2, 9}, {3, 9}}) {
        bench.panel().call("decod_wd_time", line);
        EXPECT_EQ(session.WdSequenceTime, time);
    }
}

TEST(Watchdog, EndsTheAutomaticReadsWhenTheDongleDoesNotAnswer) {
    PanelBench bench;
    bench.work(configure);
    bench.work("read_auto(41) read_auto(34)");
    bench.dongle.setFaults(DongleFaults({dongleFaultFrom("silent")}));
    bench.press("watchdog(0)");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{checkTheCable});
    EXPECT_TRUE(bench.session().LinkFailed);
    EXPECT_FALSE(bench.panel().part<AutoReads>().timer.enabled());
    for (int box = 0; box <= 34; ++box)
        EXPECT_FALSE(bench.panel().part<AutoReads>().boxes(box).checked()) << box;
}

TEST(Watchdog, OfEveryPanelShowsThatTheDongleServesItNoMore) {
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
