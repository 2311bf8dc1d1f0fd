#include "platform/failure.h"
#include "support/chip_folder.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct TabBench : TestBench {
    explicit TabBench(const std::vector<int>& parts = {}) {
        for (const int part : parts)
            get<forms::CheckBox>(fmt::format("frmConfigureSPI.CheckEnable{}", part)).setValue(1);
        program.dialog().cmdApply_Click();
    }

    forms::TabStrip& strip() { return program.mainForm().tabs.TabStripMain; }
    std::string captions() {
        std::string result;
        for (int tab = 3; tab <= strip().count(); ++tab)
            result +=
                fmt::format("[{}]", strip().tabs()[static_cast<std::size_t>(tab - 1)].caption);
        return result;
    }
    /// The word that is sent, as "16/2" for 16 bits in type 2.
    std::string shape() { return fmt::format("{}/{}", session().SPIWordLength, session().SPIType); }
    /// The pages that are visible, with the title and the Send buttons beside them.
    std::string shown() {
        std::string result;
        for (const auto& page : program.mainForm().tabs.FrameMain)
            if (page->visible())
                result += fmt::format("{} ", page->index().value());
        return fmt::format("{}{} {}", result, label("frmMain.labelMainTitle"),
                           program.mainForm().run.cmdSendOnce.visible() ? "send" : "-");
    }
};

TEST(MainTabs, AreInTheOrderOfTheParts) {
    TabBench bench({72516, 72537, 72361, 72518});
    EXPECT_EQ(bench.captions(), "[ZT72361][SBC ZT7251x Family][ZT72537 - SBC LIN 2.5G][ZT72516]");
    EXPECT_EQ(bench.session().PartTabs[1].PartNumber, 72518);
    forms::Form& form = bench.program.mainForm();
    EXPECT_EQ(form.call("IsTabActive", 72537), forms::Value(true));
    EXPECT_EQ(form.call("IsTabActive", 72517), forms::Value(false));
    bench.program.dialog().CheckEnable72537.setValue(0);
    bench.program.dialog().cmdApply_Click();
    EXPECT_EQ(bench.captions(), "[ZT72361][SBC ZT7251x Family][ZT72516]");
    EXPECT_EQ(form.call("IsTabActive", 72537), forms::Value(false));
    form.call("ResetTabs");
    form.call("Add72518Tab");
    form.call("Add72518Tab"); // a second tab of a part changes nothing
    EXPECT_EQ(bench.captions(), "[SBC ZT7251x Family][SBC ZT7251x Family]");
}

TEST(MainTabs, BringTheirPageTitleAndWord) {
    TabBench bench({72361, 72517, 72537, 72516});
    bench.program.dialog().txtPartName.setText("Mine");
    for (const auto& [tab, shown] :
         {row(1, "1 Generic Bitlux Forge send 8/1"), row(2, "2 Generic Bitlux Forge send 8/1"),
          row(5, "6 ZT72537 Bitlux Forge send 8/2"), row(6, "7 ZT72516 Bitlux Forge - 32/1"),
          row(5, "6 ZT72537 Bitlux Forge - 8/2"), row(4, "3 ZT72517 Bitlux Forge - 8/4"),
          row(3, "5 ZT72361 Bitlux Forge - 8/1"), row(6, "7 ZT72516 Bitlux Forge - 32/1"),
          row(1, "1 Generic Bitlux Forge send 8/1"), // its panel, in front, gave the word back
          row(5, "6 ZT72537 Bitlux Forge send 8/2"), row(1, "1 Generic Bitlux Forge send 8/2")}) {
        bench.strip().click(tab);
        EXPECT_EQ(bench.shown() + " " + bench.shape(), shown) << tab;
        EXPECT_EQ(bench.session().ActiveMainTab, tab);
    }
    bench.strip().click(4);
    bench.program.dialog().cmdApply_Click();
    EXPECT_EQ(bench.strip().selected(), 1);
    EXPECT_EQ(bench.shown(), "1 Generic Bitlux Forge send");
}

TEST(MainTabs, LookForADongleAtAChangeOfPage) {
    TabBench bench;
    bench.dongle.plug();
    bench.strip().click(1); // no change
    EXPECT_FALSE(bench.session().USBReady);
    bench.strip().click(2);
    EXPECT_TRUE(bench.session().USBReady);
    bench.dongle.unplug();
    bench.strip().click(1);
    EXPECT_FALSE(bench.session().USBReady);
}

TEST(MainTabs, OpenTheirPanelsWhereThereAreSome) {
    TabBench bench({72518, 72537, 72516});
    std::vector<int> opened;
    bench.program.mainForm().tabs.showPanel = [&opened](int part) { opened.push_back(part); };
    bench.strip().click(4);
    bench.session().SPIType = 7;
    bench.click("frmMain.open_72537");
    EXPECT_EQ(bench.shown() + " " + bench.shape(), "6 ZT72537 Bitlux Forge send 8/7");
    bench.strip().click(3);
    EXPECT_EQ(bench.session().SPIType, 1);
    bench.dongle.plug();
    bench.click("frmMain.ZT72518_windows"); // another type than the tab's
    EXPECT_TRUE(bench.session().USBReady);
    EXPECT_EQ(bench.shown() + " " + bench.shape(), "4 ZT72518 Bitlux Forge - 16/2");
    bench.strip().click(5);
    bench.session().SPIWordLength = 8;
    bench.session().SPIType = 7;
    bench.click("frmMain.OpenZT72516Window");
    EXPECT_EQ(bench.shown() + " " + bench.shape(), "7 ZT72516 Bitlux Forge - 32/1");
    EXPECT_EQ(opened, (std::vector{72537, 72537, 72518, 72518, 72516, 72516}));
}

/// Words of 24 bits in type 3 on the port, and what the status line shows.
struct BorrowedShapeBench : TabBench {
    explicit BorrowedShapeBench(const std::vector<int>& parts) : TabBench(parts) {
        get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").click(3);
        configure("24");
        program.dialog().setVisible(false);
    }
    std::string notice() {
        const std::optional<Notice> now = program.mainForm().notices.now();
        return now ? fmt::format("{} [{}]", now->text, now->button) : "";
    }
    bool saves(const std::string& record) {
        return program.mainForm().files.text().find(record) != std::string::npos;
    }
};

TEST(MainTabs, RestoreTheShapeWhenTheyAreLeft) {
    BorrowedShapeBench bench({72517, 72518, 72516});
    bench.strip().click(4);
    bench.program.forms().unload("ZT72518");
    bench.click("frmMain.ZT72518_windows");
    EXPECT_EQ(bench.notice(), "") << "it belongs here";
    bench.strip().click(1);
    EXPECT_EQ(bench.notice(), "16 bits, type 2 from the ZT7251x family panel "
                              "[Back to 24 bits, type 3]");
    bench.strip().click(3);
    bench.strip().click(2);
    EXPECT_EQ(bench.notice(), "8 bits, type 4 from the ZT72517 tab [Back to 24 bits, type 3]");
    EXPECT_TRUE(bench.saves(R"("[SPIWordLength]","24")") && bench.saves(R"("[SPIType]",3)"));
    bench.strip().click(1);
    bench.session().DataPortPins.setLevel(bench.session().ClockPin, 0);
    EXPECT_EQ(accessesOf(bench, [&] { bench.program.mainForm().notices.press(); }), "05")
        << "the clock of the type rests high again";
    EXPECT_EQ(bench.notice(), "");
    bench.send("A5C3F0");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "A5C3F0");
    EXPECT_EQ(accessesOf(bench, [&] { bench.choose("frmMain.itemAppliedWord"); }), "");
    // A type that something else has set is saved as it is.
    bench.session().SPIType = 5;
    EXPECT_EQ(bench.notice(), "24 bits, type 5 instead of what was applied "
                              "[Back to 24 bits, type 3]");
    EXPECT_TRUE(bench.saves(R"("[SPIWordLength]","24")") && bench.saves(R"("[SPIType]",5)"));
}

TEST(MainTabs, LeaveAShapeThatAPageMayNotFit) {
    BorrowedShapeBench bench({72516});
    bench.configure("8");
    bench.program.dialog().setVisible(false);
    bench.save("Wake");
    bench.session().SPIWordLength = 32; // as the tab leaves it
    bench.send("5A");
    bench.session().DisplayHex = 0;
    bench.click("frmMain.cmdSendOnce");
    bench.click("frmMain.cmdAll1Single");
    bench.get<forms::ComboBox>("frmMain.cmbMasterQCList").select(0);
    bench.strip().click(2);
    bench.program.mainForm().commands.setToSend({"Wake"});
    bench.click("frmMain.cmdSendOnce");
    const std::string reason = " has 8 bits, but words of 32 bits are sent now: a part tab or a "
                               "panel has set that length.";
    const std::string page = "The word of this page" + reason;
    const std::string command = "The Quick Command \"Wake\"" + reason;
    EXPECT_EQ(bench.boxes.takeTexts(), (Texts{page, page, page, command, command}));
    EXPECT_EQ(bench.log(), Texts{});
    bench.program.mainForm().call("BackToAppliedWord");
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.log().size(), 5U);
}

/// A user with the chips "one" and "two".
struct ChipBench : ChipFolder, TabBench {
    ChipBench() : TabBench(std::vector<int>{}) {
        add("one");
        add("two");
        form().call("AddChipTab", std::string("one"));
        form().call("AddChipTab", std::string("two"));
        program.mainForm().tabs.showUserPanel = [this](const std::string& name) {
            opened += name + " ";
        };
    }
    forms::Form& form() { return program.mainForm(); }
    std::string shownChip() {
        return fmt::format("{} {} {}", program.mainForm().tabs.FrameChip.visible() ? "chip" : "-",
                           shown(), session().ActiveMainTab);
    }
    std::string opened;
};

TEST(MainTabs, OfUsersChipsFollowThoseOfTheParts) {
    ChipBench bench;
    EXPECT_EQ(bench.captions(), "[one][two]");
    EXPECT_EQ(bench.session().ConfigDirty, ConstOn);
    bench.session().SPIWordLength = 13;
    bench.session().SPIType = 7;
    bench.strip().click(4);
    EXPECT_EQ(bench.shownChip() + " " + bench.shape(), "chip two Bitlux Forge - 4 13/7");
    EXPECT_EQ(bench.opened, "");
    bench.click("frmMain.OpenChipPanel");
    bench.strip().click(3);
    bench.form().call("OpenChipPanel");
    EXPECT_EQ(bench.opened, "two one ");

    // parts come and go in front of them
    bench.form().call("Add72518Tab");
    EXPECT_EQ(bench.captions(), "[SBC ZT7251x Family][one][two]");
    EXPECT_EQ(bench.session().PartTabs[0].PartNumber, 72518);
    EXPECT_EQ(bench.strip().selected(), 4);
    EXPECT_EQ(bench.shownChip(), "chip one Bitlux Forge - 4");
    EXPECT_EQ(bench.form().call("IsTabActive", 0), forms::Value(false));
    bench.strip().click(3);
    EXPECT_EQ(bench.shownChip(), "- 4 ZT72518 Bitlux Forge - 3");
    bench.strip().click(5);
    EXPECT_EQ(bench.shownChip(), "chip two Bitlux Forge - 5");
    bench.program.dialog().cmdApply_Click(); // which has no part
    EXPECT_EQ(bench.captions(), "[one][two]");
    EXPECT_EQ(bench.shownChip(), "- 1 Generic Bitlux Forge send 1");

    bench.strip().click(4);
    bench.form().call("RemoveChipTab", std::string("one"));
    EXPECT_EQ(bench.shownChip(), "chip two Bitlux Forge - 3");
    bench.form().call("RemoveChipTab", std::string("two"));
    EXPECT_EQ(bench.shownChip(), "- 1 Generic Bitlux Forge send 1");
    EXPECT_EQ(bench.captions(), "");
    EXPECT_TRUE(bench.session().UserChips.empty());
}

TEST(MainTabs, OfUsersChipsAreThoseThatHaveAFile) {
    ChipBench bench;
    bench.form().call("AddChipTab", std::string("one")); // it has one
    EXPECT_EQ(bench.captions(), "[one][two]");
    const auto refusal = [&bench](const std::string& name) {
        return failureOf([&] { bench.form().call("AddChipTab", name); });
    };
    EXPECT_EQ(refusal("tow"), "There is no chip \"tow\". Did you mean two?");
    EXPECT_EQ(refusal("zt72518"), "The chip \"zt72518\" is one of the program");
    EXPECT_EQ(refusal(""), "There is no chip \"\"");
    EXPECT_THROW(bench.form().call("RemoveChipTab", std::string("three")), Failure);
}

} // namespace
} // namespace bitlux::test
