// A chip of a user from its file to words on the wire, with the expander of examples/chips.

#include "support/chip_folder.h"
#include "support/test_bench.h"
#include "workbench/library_chips.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* expander = BITLUX_SOURCE "/examples/chips/mcp23s17.toml";

struct UsersBench : private ChipFolder, public TestBench {
    UsersBench() : TestBench("none", {}, WithDongle::Yes) {}

    using ChipFolder::add;
    using ChipFolder::data;

    void open(const std::string& fileName) {
        fileDialogs.answer(fileName);
        choose("frmMain.itemOpenChip");
    }
    forms::TabStrip& tabs() { return get<forms::TabStrip>("frmMain.TabStripMain"); }
    forms::Control& on(const std::string& control) {
        return program.forms().control("Panel_mcp23s17." + control);
    }
    std::uint64_t row(const char* labels) {
        auto& panel = dynamic_cast<PanelForm&>(program.forms().form("Panel_mcp23s17"));
        return panel.pageControls.row(labels).value();
    }
};

TEST(UsersChip, IsKeptAndHasATabAPanelAndADevice) {
    UsersBench bench;
    bench.open(expander);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_TRUE(std::filesystem::exists(bench.data.path("bitlux-forge/chips/mcp23s17.toml")));
    EXPECT_EQ(bench.tabs().count(), 3);
    EXPECT_EQ(bench.tabs().selected(), 3);
    bench.bench.connect(makeBenchDevice("mcp23s17"));
    bench.click("frmMain.OpenChipPanel");
    ASSERT_TRUE(bench.program.forms().isVisible("Panel_mcp23s17"));
    EXPECT_EQ(bench.session().SPIWordLength, 24);

    EXPECT_EQ(bench.row("IODIRA_W"), 0U);
    const Texts trace = traceOf(
        bench,
        [&bench] {
            bench.on("IODIRA_W(7)").click();
            for (const char* command : {"Cm_IODIRA_W", "Cm_IODIRA_R", "Cm_IODIRB_R"})
                bench.on(command).click();
        },
        Times::No);
    EXPECT_EQ(bench.row("IODIRA_R"), 0x80U);
    EXPECT_EQ(bench.row("IODIRB_R"), 0xFFU) << "its reset value";
    ASSERT_EQ(trace.size(), 6U);
    EXPECT_EQ(trace[0], "OUT 18 70 00 40 00 80 00 00");
    EXPECT_EQ(trace[2], "OUT 18 70 00 41 00 00 00 00");
    EXPECT_EQ(trace[4], "OUT 18 70 00 41 01 00 00 00");
}

TEST(UsersChip, IsReplacedOnlyWhenTheUserSaysSo) {
    UsersBench bench;
    const std::string kept = bench.add("mcp23s17");
    const std::string before = contentOf(kept);
    bench.boxes.answer(MessageBox::Answer::No);
    bench.open(expander);
    EXPECT_EQ(contentOf(kept), before);
    EXPECT_EQ(bench.tabs().count(), 2);
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.program.openChip(expander);
    EXPECT_EQ(contentOf(kept), contentOf(expander));
    EXPECT_EQ(bench.tabs().count(), 3);
    bench.boxes.takeTexts();

    const std::string damaged = bench.data.write("damaged.toml", "[chip]\ntitle = 5\n");
    bench.open(damaged);
    const Texts shown = bench.boxes.takeTexts();
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_NE(shown[0].find(damaged + ":2:9: `title` is no text"), std::string::npos) << shown[0];
    EXPECT_EQ(bench.tabs().count(), 3);
}

TEST(UsersChip, IsReadAgainWhenItsPanelIsOpenedAnew) {
    UsersBench bench;
    bench.open(expander);
    bench.click("frmMain.OpenChipPanel");
    bench.program.forms().unload("Panel_mcp23s17");
    const std::string kept = bench.data.path("bitlux-forge/chips/mcp23s17.toml");
    std::string text = contentOf(kept);
    const std::string title = "title = \"MCP23S17\"";
    text.replace(text.find(title), title.size(), "title = \"Board 7\"");
    bench.data.write("bitlux-forge/chips/mcp23s17.toml", text);
    bench.click("frmMain.OpenChipPanel");
    EXPECT_EQ(bench.program.forms().form("Panel_mcp23s17").caption(), "Board 7");

    bench.program.forms().unload("Panel_mcp23s17");
    std::filesystem::remove(kept);
    bench.click("frmMain.OpenChipPanel");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_FALSE(bench.program.forms().isVisible("Panel_mcp23s17"));
}

} // namespace
} // namespace bitlux::test
