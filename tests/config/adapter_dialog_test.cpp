// Adapters in the dialog and in configuration files.

#include "file_bench.h"

#include "program/word_settings.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct AdapterBench : TestBench {
    explicit AdapterBench(std::vector<std::int16_t> ports = {address378}) : TestBench("echo") {
        port.setAddresses(std::move(ports));
        bench.adapter.plug();
        program.dialog().optHex.setValue(true);
    }

    forms::ComboBox& list() { return get<forms::ComboBox>("frmConfigureSPI.cmbPortsAvailable"); }
    /// Searches, chooses an entry of the list, and applies; the boxes that came.
    Texts use(int entry) {
        choose("frmMain.itemPortOptions");
        click("frmConfigureSPI.Btn_ParallelPort");
        list().select(entry);
        click("frmConfigureSPI.cmdApply");
        program.dialog().setVisible(false);
        return boxes.takeTexts();
    }
    Texts openRecords(const std::string& records) {
        fileDialogs.answer(folder.write(
            "records.spi", "\"Bitlux Configuration File (Version 3.x.x)\",\"\"\r\n" + records));
        choose("frmMain.itemOpen");
        return boxes.takeTexts();
    }
    std::string saved() {
        fileDialogs.answer(folder.path("saved.spi"));
        choose("frmMain.itemSaveAs");
        return contentOf(folder.path("saved.spi"));
    }
    /// Which bus a word goes over.
    std::string busOfAWord() {
        const std::vector<std::uint8_t> before = bench.adapter.lastBytes();
        const Texts trace = traceOf(*this, [this] { send("A5"); });
        if (trace.empty())
            return "none: " + fmt::format("{}", fmt::join(boxes.takeTexts(), "|"));
        if (trace[0].find("OUT") != std::string::npos)
            return "dongle";
        return bench.adapter.lastBytes().size() > 1 && bench.adapter.lastBytes() != before
                   ? "adapter"
                   : "port";
    }

    TemporaryFolder folder;
};

constexpr const char* applyNow = "\"[ApplyNow]\",\"\"\r\n";
constexpr const char* onAdapter = "\"[Adapter]\",\"FT232R BENCH\"\r\n";
constexpr const char* onAnother = "\"[Adapter]\",\"FT232H X7\"\r\n";

TEST(AdapterDialog, ListsAdaptersAfterThePortsAndUsesOne) {
    AdapterBench bench({address378, 0x278});
    bench.bench.adapter.unplug();
    EXPECT_EQ(bench.use(0), Texts{});
    bench.bench.adapter.plug();
    EXPECT_EQ(bench.list().items(), (Texts{"LPT1: 0x378", "LPT2: 0x278"})); // until the next search
    EXPECT_EQ(bench.use(2), Texts{});
    EXPECT_EQ(bench.list().items(), (Texts{"LPT1: 0x378", "LPT2: 0x278", "FT232R BENCH"}));
    EXPECT_EQ(bench.session().AdapterInUse, "FT232R BENCH");
    EXPECT_EQ(bench.session().AdapterClock, 1'000'000);
    EXPECT_EQ(bench.bench.adapter.driven(), 0x0B);
    EXPECT_EQ(bench.bench.adapter.lines(), 0xF8); // chip select high; D4 to D7 are pulled up
    EXPECT_EQ(bench.busOfAWord(), "adapter");
    EXPECT_EQ(bench.log(), (Texts{"SPI Word Sent:", "  A5", "SPI Word Received:", "  00", " "}));

    bench.choose("frmMain.itemPortOptions");
    bench.list().select(1);
    bench.click("frmConfigureSPI.cmdCancel");
    EXPECT_EQ(bench.list().text(), "FT232R BENCH");
    EXPECT_EQ(bench.use(0), Texts{});
    EXPECT_EQ(bench.session().AdapterInUse, "");
    EXPECT_EQ(bench.bench.adapter.driven(), 0);
    EXPECT_EQ(bench.busOfAWord(), "port");

    EXPECT_EQ(bench.use(2), Texts{});
    bench.program.end();
    EXPECT_EQ(bench.bench.adapter.driven(), 0);
}

TEST(AdapterDialog, NeedsNoPortAndNoDongle) {
    AdapterBench bench(std::vector<std::int16_t>{});
    EXPECT_EQ(bench.use(0), Texts{});
    EXPECT_EQ(bench.busOfAWord(), "adapter");
    bench.bench.adapter.unplug();
    bench.choose("frmMain.itemPortOptions");
    bench.click("frmConfigureSPI.Btn_ParallelPort"); // the bus stays ready, as without a port
    EXPECT_EQ(bench.list().items(), Texts{});
}

TEST(AdapterDialog, RefusesPinsThatTheAdapterDoesNotHave) {
    AdapterBench bench;
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbCS").setText("9");
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbDO").setText("13");
    bench.enablePin("Control", 0, "14", "Lamp");
    EXPECT_EQ(bench.use(1),
              Texts{"The adapter FT232R BENCH has no line for pin 9 (CS), pin 13 (DO), pin 14 "
                    "(Lamp). It has one for the pins 2 to 8 and 12."});
    EXPECT_EQ(bench.session().AdapterInUse, "");
    EXPECT_EQ(bench.bench.adapter.driven(), 0);
    // Item 7 of DO reads pin 12. Extra pins are on D4 to D7.
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbCS").setText("2");
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbDO").setText("7");
    bench.get<forms::CheckBox>("frmConfigureSPI.chkControlPinEnable(0)").setValue(0);
    bench.enablePin("Data", 0, "8", "Reset");
    EXPECT_EQ(bench.use(1), Texts{});
    EXPECT_EQ(bench.bench.adapter.driven(), 0x8B);
}

TEST(AdapterDialog, IsNamedInTheFileWhileOneIsChosen) {
    AdapterBench bench;
    bench.use(0);
    EXPECT_EQ(bench.saved().find("[Adapter]"), std::string::npos);
    bench.use(1);
    const std::string file = bench.saved();
    EXPECT_NE(file.find(onAdapter), std::string::npos);
    EXPECT_LT(file.find(onAdapter), file.find("[ApplyNow]"));

    AdapterBench other; // where nobody has searched
    EXPECT_EQ(other.openRecords("\"[SerialMode]\",0\r\n" + (onAdapter + std::string(applyNow))),
              Texts{});
    EXPECT_EQ(other.busOfAWord(), "adapter");
}

TEST(AdapterDialog, FallsBackFromAnAdapterThatIsNotThere) {
    const std::string file = std::string(onAnother) + applyNow;
    const Texts told{"The adapter FT232H X7 was not detected."};
    AdapterBench withPort;
    withPort.use(1);
    EXPECT_EQ(withPort.openRecords(file), told);
    EXPECT_EQ(withPort.busOfAWord(), "port");

    // The chip on another adapter receives no word that was not meant for it.
    AdapterBench withAdapter(std::vector<std::int16_t>{});
    withAdapter.use(0);
    EXPECT_EQ(withAdapter.openRecords(file), told);
    EXPECT_EQ(withAdapter.busOfAWord(), "none: No device available to send SPI Data.");
    EXPECT_EQ(withAdapter.bench.adapter.driven(), 0);
    EXPECT_EQ(withAdapter.use(0), Texts{});
    EXPECT_EQ(withAdapter.busOfAWord(), "adapter");
}

TEST(AdapterDialog, MayBeFixedWhateverFilesSay) {
    AdapterBench bench;
    EXPECT_TRUE(chooseBus(bench.program, Bus::Adapter, [] { return std::string(); }));
    const std::string file = "\"[HardCode378]\",1\r\n" + (onAnother + std::string(applyNow));
    EXPECT_EQ(bench.openRecords(file), Texts{});
    EXPECT_EQ(bench.busOfAWord(), "adapter");
}

TEST(AdapterDialog, KeepsAnEntryWhoseAdapterIsUnplugged) {
    AdapterBench bench;
    bench.use(1);
    bench.bench.adapter.unplug();
    EXPECT_EQ(bench.openRecords(std::string(onAnother) + applyNow).size(), 1U); // which searches
    bench.choose("frmMain.itemPortOptions");
    bench.list().select(1);
    bench.click("frmConfigureSPI.cmdApply");
    EXPECT_EQ(bench.boxes.takeTexts(),
              Texts{"The adapter FT232R BENCH is not plugged in. Plug it in, then try again."});
    bench.bench.adapter.plug();
    EXPECT_EQ(bench.busOfAWord(), "adapter");
}

TEST(AdapterDialog, StopsAtAnAdapterThatIsPulledOutAndGoesOnWhenItIsBack) {
    AdapterBench bench;
    bench.use(1);
    bench.bench.adapter.unplug();
    bench.loop.atTurn(3, [&bench] { bench.click("frmMain.cmdStopContinuous"); });
    bench.edit("frmMain.txtHexWordToSend", "A5");
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_TRUE(bench.log().empty());
    bench.bench.adapter.plug();
    EXPECT_EQ(bench.busOfAWord(), "adapter");
    EXPECT_EQ(bench.bench.adapter.driven(), 0x0B);
}

} // namespace
} // namespace bitlux::test
