#include "sending/batch_bench.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct Pin {
    std::string kind; ///< "Data" or "Control"
    int row;
    std::string number;
    std::string name;
};

void enable(TestBench& bench, const Pin& pin) {
    bench.enablePin(pin.kind, pin.row, pin.number, pin.name);
}

struct PortBench : BatchBench {
    explicit PortBench(const std::vector<Pin>& pins) {
        for (const Pin& pin : pins)
            enable(*this, pin);
        configure("8");
    }
};

struct PinsOnDongle : TestBench {
    explicit PinsOnDongle(const std::vector<int>& pins)
        : TestBench("loopback", {}, WithDongle::Yes) {
        for (const int pin : pins)
            get<forms::CheckBox>(fmt::format("frmConfigureSPI.Check({})", pin)).setValue(1);
        program.dialog().optHex.setValue(true);
        program.dialog().cmdApply_Click();
        edit("frmMain.txtHexWordToSend", "A5");
    }
};

/// Names of the rows that are shown, and nothing of the rows after them.
std::string rows(TestBench& bench) {
    std::string names;
    for (int row = 0; row < ExtraPinRows::rowCount; ++row) {
        int shown = 0;
        for (const char* control : {"lblPinName", "cmdToggleHigh", "cmdToggleLow", "lblSetNow",
                                    "optSetHighNow", "optSetLowNow"})
            shown += bench.program.mainForm().control(fmt::format("{}({})", control, row)).visible()
                         ? 1
                         : 0;
        EXPECT_TRUE(shown == 0 || shown == 6) << row;
        if (shown > 0)
            names += fmt::format("[{}]", bench.label(fmt::format("frmMain.lblSetNow({})", row)));
    }
    return names;
}

std::string wireOf(TestBench& bench, const std::function<void()>& action) {
    return fmt::format("{}", fmt::join(traceOf(bench, action, Times::No), "; "));
}

std::string setNow(TestBench& bench, int row, bool high) {
    return wireOf(bench, [&] {
        bench.program.mainForm()
            .control(fmt::format("optSet{}Now({})", high ? "High" : "Low", row))
            .click();
    });
}

/// The fields that share a pin, as "3: DI Data 0;".
std::string clashes(const ConfigureDialog& dialog) {
    std::string text;
    for (const PinClash& clash : dialog.pinClashes()) {
        text += clash.pin + ":";
        for (const PinField& field : clash.fields)
            text += " " + field.line;
        text += ";";
    }
    return text;
}

TEST(ExtraPins, FillRowsInTheirOrder) {
    PortBench bench({{"Control", 2, "16", "Reset"}});
    EXPECT_EQ(rows(bench), "[Reset]");
    for (const auto& [name, tooltip] :
         {row("cmdToggleHigh", "Click to set Reset high in 'Commands To Send'"),
          row("cmdToggleLow", "Click to set Reset low in 'Commands To Send'"),
          row("optSetHighNow", "Click to set Reset high"),
          row("optSetLowNow", "Click to set Reset low")})
        EXPECT_EQ(bench.program.mainForm().control(fmt::format("{}(0)", name)).tooltip(), tooltip);
    enable(bench, {"Data", 3, "9", ""});
    EXPECT_EQ(rows(bench), "[Reset]") << "not yet applied";
    bench.configure("8");
    EXPECT_EQ(rows(bench), "[Data 3][Reset]");
    EXPECT_EQ(rows(*std::make_unique<PinsOnDongle>(std::vector{8, 0, 5})),
              "[Data 0][Control 0][Control 3]");
}

TEST(ExtraPins, MoveOnThePort) {
    // Chip select idles high on bit 0. Control bits 0, 1 and 3 are inverted.
    for (const auto& [pin, high, low] :
         Rows<Pin, const char*, const char*>{{{"Data", 0, "5", ""}, "W 378 09", "W 378 01"},
                                             {{"Data", 4, "9", ""}, "W 378 81", "W 378 01"},
                                             {{"Control", 0, "1", ""}, "W 37A 0A", "W 37A 0B"},
                                             {{"Control", 1, "14", ""}, "W 37A 09", "W 37A 0B"},
                                             {{"Control", 2, "16", ""}, "W 37A 0F", "W 37A 0B"},
                                             {{"Control", 3, "17", ""}, "W 37A 03", "W 37A 0B"}}) {
        PortBench bench({pin});
        EXPECT_EQ(setNow(bench, 0, true), high) << pin.number;
        EXPECT_EQ(setNow(bench, 0, false), low) << pin.number;
        EXPECT_TRUE(bench.boxes.shown().empty());
    }
}

TEST(ExtraPins, KeepTheirLevelsWhileWordsGoOutUntilApply) {
    PortBench bench({{"Data", 0, "9", ""}});
    setNow(bench, 0, true);
    EXPECT_EQ(accessesOf(bench, [&] { bench.send("0"); }).substr(0, 5), "80 80");
    EXPECT_EQ(accessesOf(bench, [&] { bench.configure("8"); }), "01");
    EXPECT_FALSE(bench.get<forms::OptionButton>("frmMain.optSetHighNow(0)").value());
    EXPECT_EQ(setNow(bench, 0, true), "W 378 81");
}

TEST(ExtraPins, OfTheControlRegisterGoLowAtApplyAndAtTheEnd) {
    for (const bool stays : {true, false}) {
        PortBench bench({{"Control", 0, "1", "EN"}});
        setNow(bench, 0, true);
        if (!stays)
            bench.get<forms::CheckBox>("frmConfigureSPI.chkControlPinEnable(0)").setValue(0);
        EXPECT_EQ(wireOf(bench, [&] { bench.configure("8"); }), "W 378 01; W 37A 0B") << stays;
        EXPECT_EQ(wireOf(bench, [&] { bench.configure("8"); }),
                  stays ? "W 378 01; W 37A 0B" : "W 378 01");
        if (stays)
            setNow(bench, 0, true);
        EXPECT_EQ(wireOf(bench, [&] { bench.program.end(); }),
                  stays ? "W 378 01; W 37A 0B" : "W 378 01");
    }
}

TEST(ExtraPins, AreFoundByName) {
    PortBench twins({{"Data", 0, "5", "EN"}, {"Data", 1, "6", "EN"}, {"Control", 0, "1", "EN"}});
    EXPECT_EQ(setNow(twins, 2, true), "W 378 19") << "all data pins of the name, and no other";

    PortBench bench({{"Data", 0, "5", "EN"}});
    bench.get<forms::Label>("frmMain.lblSetNow(0)").setCaption("DIS");
    EXPECT_EQ(setNow(bench, 0, true), "");
    EXPECT_EQ(setNow(bench, 0, false), "");
    EXPECT_EQ(bench.boxes.takeTexts(),
              (Texts{"Pin Name not found!", "Error: Pin Name not found!"}));
    EXPECT_TRUE(bench.log().empty());
}

TEST(ExtraPins, TravelWithAWordOnTheDongle) {
    PinsOnDongle bench({1, 7, 8});
    EXPECT_EQ(setNow(bench, 0, true), "OUT 48 70 02 A5 00 00 00 00; IN 48 70 02 A5 00 00 00 00");
    EXPECT_EQ(setNow(bench, 1, true), "OUT 48 70 82 A5 00 00 00 00; IN 48 70 82 A5 00 00 00 00");
    EXPECT_EQ(setNow(bench, 2, true), "OUT C8 70 82 A5 00 00 00 00; IN C8 70 82 A5 00 00 00 00");
    EXPECT_EQ(bench.dongle.extraPins(), 0x182);
    EXPECT_EQ(wireOf(bench, [&] { bench.send("1"); }).substr(0, 27), "OUT 88 70 82 01 00 00 00 00");
    bench.program.dialog().cmdApply_Click(); // levels stay on this bus
    EXPECT_EQ(setNow(bench, 0, false).substr(0, 27), "OUT C8 70 80 01 00 00 00 00");
    EXPECT_EQ(bench.session().USBPinUpdate, 0);
    // What no word has carried is neither shown nor logged, and travels with no later word.
    bench.click("frmMain.cmdClearLogSingle");
    bench.dongle.setFaults(DongleFaults({dongleFaultFrom("stalled@1")}));
    setNow(bench, 0, true);
    EXPECT_FALSE(bench.get<forms::OptionButton>("frmMain.optSetHighNow(0)").value());
    EXPECT_EQ(bench.log(), Texts{});
    EXPECT_EQ(wireOf(bench, [&] { bench.send("1"); }).substr(0, 27), "OUT 88 70 80 01 00 00 00 00");
}

TEST(ExtraPins, AreLoggedByTheRulesOfWords) {
    PortBench bench({{"Data", 0, "5", "EN"}});
    setNow(bench, 0, true);
    setNow(bench, 0, false);
    EXPECT_EQ(bench.log(), (Texts{"Set HIGH: EN", " ", "Set LOW: EN", " "}));
    bench.click("frmMain.cmdClearLogSingle");
    bench.edit("frmMain.txtHexWordToSend", "1");
    // Two words are logged; what is set beyond the limit is not.
    bench.session().ContinuousLogLimit = 2;
    ExtraPinRows& pins = bench.program.mainForm().extraPins;
    bench.loop.atTurn(1, [&pins] { pins.optSetHighNow_Click(0); });
    bench.loop.atTurn(2, [&pins] { pins.optSetLowNow_Click(0); });
    bench.sendContinuously(3);
    const Texts log = bench.log();
    EXPECT_EQ(log.at(5), "Set HIGH: EN");
    EXPECT_EQ(log.back(), " ");
    EXPECT_EQ(std::count(log.begin(), log.end(), "Set LOW: EN"), 0);
}

TEST(ExtraPins, BecomeLinesOfTheCommandsToSend) {
    PortBench bench({{"Data", 0, "5", "EN"}});
    bench.click("frmMain.cmdToggleHigh(0)");
    bench.click("frmMain.cmdToggleLow(0)");
    EXPECT_EQ(bench.lines("frmMain.lstCommandsToSend"), (Texts{"* Set HIGH: EN", "* Set LOW: EN"}));
    EXPECT_TRUE(bench.log().empty());
}

TEST(ExtraPins, AndThoseOfTheWordAreCheckedBeforeTheyAreApplied) {
    using Pins = std::vector<Pin>;
    using WordPins = std::array<const char*, 4>; // CS, DI, CLK and DO
    const char* const noPin = "No pin assignment was made for one or more Extra Pins.";
    const char* const conflict = "Pin Conflict!  Please select a different pin configuration.";
    const WordPins usual{"2", "3", "4", "12"};
    const Rows<Pins, WordPins, std::string> cases{
        {{}, {"2", "2", "4", "12"}, "2: CS DI;"},
        {{}, {"2", "3", "2", "12"}, "2: CS CLK;"},
        {{}, {"2", "4", "4", "12"}, "4: DI CLK;"},
        {{}, {"7", "3", "4", "7"}, ""}, // DO is on another connector row
        {{{"Data", 0, "", ""}}, usual, noPin},
        {{{"Control", 3, "", ""}}, usual, noPin},
        {{{"Data", 0, "2", ""}}, usual, "2: CS Data 0;"},
        {{{"Data", 0, "5", ""}, {"Data", 1, "5", ""}}, usual, "5: Data 0 Data 1;"},
        {{{"Control", 0, "16", ""}, {"Control", 3, "16", "LED"}}, usual, "16: Control 0 LED;"},
        {{{"Data", 0, "3", ""}}, {"7", "3", "7", "7"}, "3: DI Data 0;7: CS CLK;"},
        {{{"Data", 0, "7", ""}}, {"2", "3", "4", "7"}, ""},
        {{{"Control", 0, "1", ""}}, usual, ""},
        {{{"Control", 0, "14", ""}}, usual, ""}};
    for (const auto& [pins, word, found] : cases) {
        TestBench bench;
        for (const Pin& pin : pins)
            enable(bench, pin);
        ConfigureDialog& dialog = bench.program.dialog();
        dialog.cmbCS.setText(word[0]);
        dialog.cmbDI.setText(word[1]);
        dialog.cmbCLK.setText(word[2]);
        dialog.cmbDO.setText(word[3]);
        const bool misses = found == noPin;
        EXPECT_EQ(clashes(dialog), misses ? "" : found);
        bench.configure("8");
        EXPECT_EQ(bench.boxes.takeTexts(),
                  found.empty() ? Texts{} : Texts{misses ? noPin : conflict});
        // Hidden, as for a configuration file, the dialog does not look for conflicts.
        dialog.cmdApply_Click();
        EXPECT_EQ(bench.boxes.takeTexts(), misses ? Texts{noPin} : Texts{}) << found;
        EXPECT_EQ(bench.session().CSPin, misses ? 0 : word[0][0] - '2');
    }
}

TEST(ExtraPins, TurnToTheirPage) {
    TestBench bench;
    const forms::Form& main = bench.program.mainForm();
    for (const std::string which : {"", "Now"}) {
        std::string shown;
        for (const int tab : {1, 2, 2, 1}) {
            bench.get<forms::TabStrip>("frmMain.TabStripLogPins" + which).click(tab);
            for (const int page : {1, 2})
                if (main.control(fmt::format("frameLogPins{}({})", which, page)).visible())
                    shown += std::to_string(page);
        }
        EXPECT_EQ(shown, "1221");
    }
}

} // namespace
} // namespace bitlux::test
