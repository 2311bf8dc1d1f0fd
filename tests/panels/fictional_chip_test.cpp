// The worked example of docs/adding-a-chip.md: a lamp driver with two registers.

#include "bench/scripted_desk.h"
#include "panels/common/panel_controls.h"
#include "panels/common/register_pages.h"
#include "platform/conversions.h"
#include "platform/forms/form_set.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

// The table

constexpr std::array<std::string_view, 4> brightness{"off", "dim", "half", "full"};
constexpr std::array<chips::OptionField, 1> lampOptions{{{.title = "Brightness",
                                                          .options = "R_Lamp",
                                                          .lowBit = 1,
                                                          .width = 2,
                                                          .captions = brightness}}};
constexpr std::array<chips::CheckBit, 1> lampChecks{{{{"Ch_Lamp", 0}, 7, "Blink"}}};
constexpr std::array<std::string_view, 4> periods{"1 s", "2 s", "4 s", "8 s"};
constexpr std::array periodBits{3, 0}; // the data sheet has them apart
constexpr std::array<chips::ComboField, 1> blinkCombos{
    {{"Combo_Blink", "Select the period", periods, periodBits}}};
constexpr chips::BitCaptions lampBits{"-", "LEVEL 0", "LEVEL 1", "-", "-", "-", "-", "BLINK"};
constexpr chips::BitCaptions blinkBits{"PERIOD 1", "-", "-", "PERIOD 0", "-", "-", "-", "-"};

constexpr std::array<chips::Register, 2> lampRegisters{{
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
     .stem = "Blink",
     .combos = blinkCombos,
     .low = {.labels = "Blink_Rl",
             .captions = blinkBits,
             .litColour = 0xFFC0C0,
             .readButton = {"Cm_Blink_Rl"}}},
}};

// The format of its words: two bits of address and one for writing in front of the byte

class LampWords : public RegisterWords {
public:
    void write(const chips::Register& target, std::uint8_t data) override {
        said += fmt::format("{:03X} ", 0x400 | target.address << 8 | data);
        chip.at(target.address) = data;
    }
    std::uint8_t read(const chips::Register& source, RegisterView) override {
        said += fmt::format("{:03X} ", source.address << 8);
        return chip.at(source.address);
    }
    void append(const std::string& name, const std::string& value) override {
        said += fmt::format("{}={} ", name, value);
    }
    [[nodiscard]] std::string writeText(const chips::Register& target) const override {
        return fmt::format("0x{:X}xx", 4 | target.address);
    }
    [[nodiscard]] std::string readText(const chips::Register& source, RegisterView) const override {
        return fmt::format("0x{:X}00", source.address);
    }

    std::string said;
    std::array<std::uint8_t, 4> chip{};
};

// The panel

struct LampPanel : forms::Form {
    explicit LampPanel(forms::FormSet& set) : Form(set, "Lamp", "Lamp driver") {
        pageControls.registerHandlers();
    }

    PanelControls pageControls{*this};
    LampWords words;
    RegisterPages pages{pageControls, words, lampRegisters};
};

TEST(FictionalChip, HasItsPanelFromItsTableAlone) {
    ScriptedBoxes boxes;
    forms::FormSet set(boxes);
    LampPanel panel(set);
    const auto click = [&](const char* control) { panel.control(control).click(); };
    const auto row = [&](const char* name) { return panel.pageControls.row(name).byte(); };

    click("R_Lamp(2)");
    click("Ch_Lamp(0)");
    EXPECT_EQ(row("Lamp_W"), 0x84);
    click("Lamp_W(1)");
    EXPECT_TRUE(dynamic_cast<forms::OptionButton&>(panel.control("R_Lamp(3)")).value());
    click("Cm_Lamp_W");
    click("Seq_Lamp_W");
    click("Seq_Lamp_Rl");
    panel.call("Cm_Lamp_Rl");
    EXPECT_EQ(row("Lamp_Rl"), 0x86);

    auto& period = dynamic_cast<forms::ComboBox&>(panel.control("Combo_Blink"));
    EXPECT_EQ(period.text(), "Select the period");
    period.edit("4 s");
    EXPECT_EQ(row("Blink_W"), 0x01);
    click("Blink_W(3)");
    EXPECT_EQ(period.text(), "8 s");
    click("Cm_Blink_W");
    click("Cm_Blink_Rl");
    EXPECT_EQ(panel.control("Blink_Rl(3)").backColor(), 0xFFC0C0U);
    EXPECT_EQ(panel.control("Cm_Blink_W").tooltip(), "0x7xx");
    EXPECT_EQ(panel.words.said, "486 Lamp Write=86 Lamp Read Low= 000 709 300 ");
}

} // namespace
} // namespace bitlux::test
