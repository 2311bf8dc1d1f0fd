// The worked example of docs/adding-a-chip.md: a lamp driver with two registers.

#include "bench/model/chip_model.h"
#include "chips/chip_reader.h"
#include "panels/common/field_text.h"
#include "panels/common/table_panel.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

// The table

constexpr std::array<std::string_view, 4> brightness{"off", "dim", "half", "full"};
constexpr std::array<oldchips::OptionField, 1> lampOptions{{{.title = "Brightness",
                                                             .options = "R_Lamp",
                                                             .lowBit = 1,
                                                             .width = 2,
                                                             .captions = brightness}}};
constexpr std::array<oldchips::CheckBit, 1> lampChecks{{{{"Ch_Lamp", 0}, 11, "Blink"}}};
constexpr std::array<std::string_view, 4> periods{"1 s", "2 s", "4 s", "8 s"};
constexpr std::array periodBits{3, 0}; // the data sheet has them apart
constexpr std::array<oldchips::ComboField, 1> blinkCombos{
    {{"Combo_Blink", "Select the period", periods, periodBits}}};
constexpr std::array<std::string_view, 12> lampBits{"-", "LEVEL 0", "LEVEL 1", "-", "-", "-",
                                                    "-", "-",       "-",       "-", "-", "BLINK"};
constexpr std::array<std::string_view, 4> blinkBits{"PERIOD 1", "-", "-", "PERIOD 0"};

constexpr std::array<oldchips::Register, 2> lampRegisters{{
    {.title = "Lamp",
     .address = 0,
     .writeLabels = "Lamp_W",
     .writeCaptions = lampBits,
     .writeButton = {"Cm_Lamp_W"},
     .sequenceButton = {"Seq_Lamp_W"},
     .stem = "Lamp",
     .options = lampOptions,
     .checks = lampChecks,
     .low = {.labels = "Lamp_Rl",
             .captions = lampBits,
             .litColour = 0xFFFFC0,
             .readButton = {"Cm_Lamp_Rl"},
             .sequenceButton = {"Seq_Lamp_Rl"}}},
    {.title = "Blink",
     .address = 3,
     .writeLabels = "Blink_W",
     .writeCaptions = blinkBits,
     .writeButton = {"Cm_Blink_W"},
     .sequenceButton = {"Seq_Blink_W"},
     .stem = "Blink",
     .combos = blinkCombos,
     .low = {.labels = "Blink_Rl",
             .captions = blinkBits,
             .litColour = 0xFFC0C0,
             .readButton = {"Cm_Blink_Rl"},
             .sequenceButton = {"Seq_Blink_Rl"}}},
}};

constexpr oldchips::Chip lamp{.form = "Lamp",
                              .title = "Lamp driver",
                              .format = {.bits = 15,
                                         .addressShift = 12,
                                         .addressMask = 3,
                                         .operationMask = 0x4000,
                                         .write = 0x4000},
                              .spiType = 2,
                              .registers = lampRegisters};

// The bench

constexpr std::string_view lampFile = R"(
[chip]
title = "Lamp driver"
[word]
bits = 15
type = 2
address = "13:12"
data = "11:0"
write = 0x4000
[[register]]
title = "Lamp"
address = 0
width = 12
[[register]]
title = "Blink"
address = 3
width = 4
)";

struct LampBench : TestBench {
    LampBench() {
        configure("8");
        bench.connect(makeChipModel(chips::readChip(lampFile, "lamp.toml").chip, "lamp"));
        panel.call("Form_Load");
        sent = program.engine().wordTransferred.follow([this] { words += wordSent(); });
    }

    std::string wordSent() {
        unsigned word = 0;
        for (std::size_t i = session().WordToSend.size(); i-- > 0;)
            word = word << 1 | (session().WordToSend[i] == 1 ? 1U : 0U);
        return fmt::format("{:04X} ", word);
    }
    void click(const char* control) { panel.control(control).click(); }
    std::uint32_t row(const char* name) { return panel.pageControls.row(name).value(); }
    std::string column(const char* list) {
        auto& box = dynamic_cast<forms::ListBox&>(panel.control(list));
        std::string lines;
        for (std::size_t i = 1; i < box.count(); ++i)
            lines += box.line(i) + ";";
        return lines;
    }

    TablePanel panel{program.forms(),
                     lamp,
                     {.session = program.session(),
                      .engine = program.engine(),
                      .desk = desk.desk(),
                      .clock = clock}};
    std::string words;
    Subscription sent;
};

TEST(FictionalChip, HasItsPagesFromItsTableAlone) {
    LampBench bench;
    bench.click("R_Lamp(2)");
    bench.click("Ch_Lamp(0)");
    EXPECT_EQ(bench.row("Lamp_W"), 0x804U);
    bench.click("Lamp_W(1)");
    EXPECT_TRUE(dynamic_cast<forms::OptionButton&>(bench.panel.control("R_Lamp(3)")).value());
    bench.click("Cm_Lamp_W");
    bench.panel.call("Cm_Lamp_Rl");
    EXPECT_EQ(bench.row("Lamp_Rl"), 0x806U);

    auto& period = dynamic_cast<forms::ComboBox&>(bench.panel.control("Combo_Blink"));
    EXPECT_EQ(period.text(), "Select the period");
    period.edit("4 s");
    EXPECT_EQ(bench.row("Blink_W"), 0x1U);
    bench.click("Blink_W(3)");
    EXPECT_EQ(period.text(), "8 s");
    bench.click("Cm_Blink_W");
    bench.click("Cm_Blink_Rl");
    EXPECT_EQ(bench.panel.control("Blink_Rl(3)").backColor(), 0xFFC0C0U);
    EXPECT_EQ(fieldTitle(blinkCombos[0]), "Select the period [3,0]");
    EXPECT_EQ(fieldTitle(lampOptions[0]), "Brightness [2:1]");
    EXPECT_EQ(bench.panel.control("Cm_Lamp_W").tooltip(), "0x4xxx");
    EXPECT_EQ(bench.panel.control("Cm_Blink_W").tooltip(), "0x700x");
    EXPECT_EQ(bench.panel.control("Cm_Blink_Rl").tooltip(), "0x3000");
    EXPECT_EQ(bench.words, "4806 0000 7009 3000 ");
}

TEST(FictionalChip, HasItsSequenceFromItsTableAlone) {
    LampBench bench;
    bench.click("R_Lamp(3)");
    for (const char* button : {"Seq_Lamp_W", "Seq_Lamp_Rl", "Seq_Blink_Rl"})
        bench.click(button);
    bench.panel.lists.insert(2, "Wait", "5");
    EXPECT_EQ(bench.column("List_Commands"), "Lamp Write;Wait;Lamp Read Low;Blink Read Low;");
    bench.click("Cm_Run_Seq");
    EXPECT_EQ(bench.words, "4006 0000 3000 ");
    EXPECT_EQ(bench.column("List_Val_read"), ";;6;0;");

    bench.panel.lists.append("Lamp Write", "1000");
    bench.panel.lists.append("Lamp Burn", "");
    for (const char* problem :
         {"The value \"1000\" is more than 12 bits", "Line 5: there is no command \"Lamp Burn\""}) {
        bench.words.clear();
        bench.click("Cm_Run_Seq");
        EXPECT_EQ(bench.words, "4006 0000 3000 ");
        EXPECT_EQ(bench.boxes.shown().back().text.find(problem), 0U) << problem;
        bench.panel.lists.remove(5);
    }
}

TEST(FictionalChip, GivesTheShapeOfWordsBack) {
    LampBench bench;
    EXPECT_EQ(bench.session().SPIWordLength, 15);
    EXPECT_EQ(bench.session().SPIType, 2);
    bench.panel.call("Form_Unload");
    EXPECT_EQ(bench.session().SPIWordLength, 8);
    EXPECT_EQ(bench.session().SPIType, 1);
}

} // namespace
} // namespace bitlux::test
