#include "panels/panel_bench.h"

#include <tuple>

namespace bitlux::test {
namespace {

/// What the dongle does by itself for the chip.
std::string service(PanelBench& bench) {
    bench.dongle.catchUp();
    for (const Reading& one : bench.dongle.readings())
        if (one.name == "Watchdog")
            return one.value;
    return "no service";
}

TEST(ClosedPanel, EndsTheServiceOfItsWatchdogOrLeavesItToTheDongle) {
    for (const auto& [form, device, hands, start, serves, stop, after] :
         {std::tuple{"ZT72518", "zt72518s", "wd_config(0)=0 wd_config(1)=5 watchdog(0)",
                     "<00 15 00 08 05 00 00 00>", "Simple WD every 50 ms", "",
                     "Simple WD every 50 ms"},
          {"ZT72516", "zt72516",
           "Check_UseSpiDongleForWD Watchdog_Mode=0 Watchdog_Timing=5 Btn_Start_Watchdog",
           "<00 16 00 08 05 00 00 00>", "Simple every 50 ms", "<00 16 00 00 00 00 00 00>", "off"},
          {"ZT72537", "zt72537", "wd_time=40 wd_en(0)",
           "<00 04 00 00 03 28 02 00> <00 04 00 02 03 28 02 00>", "03 every 30 ms",
           "<00 04 00 00 03 28 02 00>", "off"},
          {"ZT72361", "zt72361", "OptWdEn(1)", "<00 04 00 01 B0 05 01 00>", "B0 every 10 ms", "",
           "B0 every 10 ms"}}) {
        PanelBench bench(device, {}, form);
        EXPECT_EQ(bench.outcomeOf(hands), start);
        bench.pass(1000);
        EXPECT_EQ(service(bench), serves) << form;
        bench.trace.clear();
        bench.program.forms().unload(form);
        EXPECT_EQ(bench.sent(), stop) << form;
        EXPECT_EQ(bench.pass(1000), "") << form << ": nothing of the panel goes on";
        EXPECT_EQ(service(bench), after) << form;
        bench.dongle.unplug(); // which is not announced
        bench.program.dongle().checkPresence();
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{}) << form;
    }
}

} // namespace
} // namespace bitlux::test
