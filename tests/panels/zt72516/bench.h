#pragma once

#include "panels/panel_bench.h"
#include "panels/zt72516/watchdog.h"

namespace bitlux::test::zt72516 {

/// The panel of the ZT72516; words of 24 bits in type 3 were applied before.
class Bench : public PanelBench {
public:
    explicit Bench(const std::string& device = "scripted", const Texts& replies = {"00000000"})
        : PanelBench(device, replies, "ZT72516", {.bits = 32}, configureWide) {}

    forms::Value call(const std::string& procedure) { return panel().call(procedure); }
    /// All rows of a list.
    std::string column(const std::string& list) {
        return fmt::format("{}", fmt::join(PanelBench::column(list), "|"));
    }
    /// Length and type of words, whether the panel is active, and the type's tab in the dialog.
    std::string shape() {
        return fmt::format("{}/{} {} {}", session().SPIWordLength, session().SPIType,
                           session().ZT72516PanelActive,
                           get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").selected());
    }

private:
    static void configureWide(TestBench& bench) {
        bench.get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").setText("24");
        bench.get<forms::OptionButton>("frmConfigureSPI.optHex").setValue(true);
        bench.get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").setSelected(3);
        bench.program.dialog().cmdApply_Click();
    }
};

} // namespace bitlux::test::zt72516
