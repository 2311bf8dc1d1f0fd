// A chip that its file describes completely: pages, words, sequence.

#include "bench/chosen_marker_files.h"
#include "chips/chip_reader.h"
#include "panels/common/panel_form.h"
#include "support/lamp_chip.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The panel on a loopback: what goes out comes back.
struct LampBench : TestBench {
    LampBench() : TestBench("loopback") {
        configure("8");
        panel.call("Form_Load");
        sent = program.engine().wordTransferred.follow([this] { words += wordSent(); });
    }

    std::string wordSent() {
        unsigned word = 0;
        for (std::size_t i = session().WordToSend.size(); i-- > 0;)
            word = word << 1 | (session().WordToSend[i] == 1 ? 1U : 0U);
        return fmt::format("{:04X}/{} ", word, session().SPIType);
    }
    template <typename T>
    T& on(const char* control) {
        return dynamic_cast<T&>(panel.control(control));
    }
    void click(const char* control) { panel.control(control).click(); }
    std::uint64_t row(const char* name) { return panel.pageControls.row(name).value(); }
    std::string column(const char* list) {
        auto& box = on<forms::ListBox>(list);
        std::string lines;
        for (std::size_t i = 1; i < box.count(); ++i)
            lines += box.line(i) + ";";
        return lines;
    }

    const ChosenMarkerFiles markers;
    Desk shown = desk.desk();
    PanelForm panel{program.forms(),
                    "Lamp",
                    chips::readChip(lampChip, "lamp.toml").chip,
                    {.session = program.session(),
                     .engine = program.engine(),
                     .dongle = program.dongle(),
                     .desk = shown,
                     .markers = markers,
                     .clock = clock}};
    std::string words;
    Subscription sent;
};

TEST(FictionalChip, HasItsPagesFromItsFileAlone) {
    LampBench bench;
    bench.click("Lamp_Brightness(2)");
    bench.click("Lamp_Blink");
    EXPECT_EQ(bench.row("Lamp_W"), 0x804U);
    bench.click("Lamp_W(1)");
    EXPECT_TRUE(bench.on<forms::OptionButton>("Lamp_Brightness(3)").value());
    bench.click("Cm_Lamp_W");
    bench.click("Cm_Lamp_R");
    EXPECT_EQ(bench.row("Lamp_R"), 0U) << "a loopback answers a read with itself";

    auto& period = bench.on<forms::ComboBox>("Combo_Blink");
    EXPECT_EQ(period.text(), "Select the period");
    period.edit("4 s");
    EXPECT_EQ(bench.row("Blink_W"), 0x1U);
    bench.click("Blink_W(3)");
    EXPECT_EQ(period.text(), "8 s");
    bench.click("Cm_Blink_W");
    bench.panel.sequence.lists.append("Blink Write", "F");
    bench.click("Cm_Blink_R");
    EXPECT_EQ(bench.panel.control("Lamp_Brightness(2)").tooltip(), "[2:1] = 10");
    EXPECT_EQ(bench.panel.control("Cm_Lamp_W").tooltip(), "0x4xxx");
    EXPECT_EQ(bench.panel.control("Cm_Blink_W").tooltip(), "0x700x");
    EXPECT_EQ(bench.panel.control("Cm_Blink_R").tooltip(), "0x3000");
    EXPECT_EQ(bench.words, "4806/2 0000/2 7009/2 3000/2 ");
}

TEST(FictionalChip, HasTheValueOfARegisterInItsChoices) {
    LampBench bench;
    bench.click("Cm_Guard_W");
    bench.click("Guard_Kind(1)");
    bench.click("Cm_Guard_W");
    EXPECT_EQ(bench.words, "6003/2 6009/2 ") << "the choices of another kind do not count";
    EXPECT_EQ(bench.row("Blink_R"), 9U) << "what answers the write";
    EXPECT_EQ(bench.panel.control("Blink_R(3)").backColor(), 0xFFC0C0U);
}

TEST(FictionalChip, HasItsSequenceFromItsFileAlone) {
    LampBench bench;
    bench.click("Lamp_Brightness(3)");
    for (const char* button : {"Seq_Lamp_W", "Seq_Lamp_R", "Seq_Blink_R"})
        bench.click(button);
    bench.panel.sequence.lists.insert(2, "Wait", "5");
    EXPECT_EQ(bench.column("List_Commands"), "Lamp Write;Wait;Lamp Read;Blink Read;");
    bench.click("Cm_Run_Seq");
    EXPECT_EQ(bench.words, "4006/2 0000/2 3000/2 ");
    EXPECT_EQ(bench.column("List_Val_read"), ";;0;0;");

    bench.words.clear();
    bench.click("Seq_Unlock");
    bench.click("Cm_Run_Seq");
    bench.click("Cm_Unlock");
    EXPECT_EQ(bench.words, "4006/2 0000/2 3000/2 1234/2 3000/2 700D/2 1234/2 3000/2 700D/2 ")
        << "a line returns a code as its button does";
    EXPECT_EQ(bench.panel.control("Cm_Unlock").tooltip(), "0x1234, 0x3000, 0x700x");
    bench.panel.sequence.lists.remove(5);

    bench.panel.sequence.lists.append("Lamp Write", "1000");
    bench.panel.sequence.lists.append("Lamp Burn", "");
    for (const char* problem :
         {"The value \"1000\" is more than 12 bits", "Line 5: there is no command \"Lamp Burn\""}) {
        bench.words.clear();
        bench.click("Cm_Run_Seq");
        EXPECT_EQ(bench.words, "4006/2 0000/2 3000/2 ");
        EXPECT_EQ(bench.boxes.shown().back().text.find(problem), 0U) << problem;
        bench.panel.sequence.lists.remove(5);
    }
}

TEST(FictionalChip, StopsItsSequenceAndAsksToSaveIt) {
    LampBench bench;
    auto& lines = bench.on<forms::ListBox>("List_Commands");
    for (const char* button : {"Seq_Lamp_R", "Seq_Blink_R", "Seq_Lamp_R"})
        bench.click(button);
    lines.select(2);
    lines.select(3);
    EXPECT_EQ(bench.panel.sequence.Val_loop(0).text() + bench.panel.sequence.Val_loop(1).text(),
              "23");

    auto& values = bench.on<forms::ListBox>("List_Value");
    values.select(3);
    bench.panel.sequence.Val_loop(2).setText("7");
    bench.click("Cm_Change_Value");
    EXPECT_EQ(bench.column("List_Value"), ";;7;");

    EXPECT_EQ(bench.on<forms::OptionButton>("R_Condition1(1)").caption(), "IRQ");
    bench.click("Ch_FirstCondition");
    bench.on<forms::TextBox>("Text_FirstCondition").setText("2");
    bench.loop.atTime(bench.clock.nanoseconds() + 1'000'000, [&bench] {
        EXPECT_EQ(bench.words, "0000/2 3000/2 ");
        bench.click("Cm_PassCondition1");
    });
    bench.click("Cm_Run_Seq");
    EXPECT_EQ(bench.words, "0000/2 3000/2 0000/2 ");

    bench.boxes.answer(MessageBox::Answer::No);
    bench.panel.outerTabs.click(3);
    bench.panel.call("Form_Unload");
    EXPECT_EQ(bench.boxes.shown().back().title, "Quit Lamp driver");
}

TEST(FictionalChip, ReadsByItself) {
    LampBench bench;
    const auto fire = [&bench] {
        bench.words.clear();
        bench.panel.call("AutoReadTimer_Timer");
        return bench.words;
    };
    EXPECT_EQ(bench.on<forms::CheckBox>("AutoRead(1)").caption(), "Blink");
    auto& timer = bench.on<forms::Timer>("AutoReadTimer");
    EXPECT_EQ(timer.interval(), 200);
    bench.click("AutoRead(1)");
    bench.click("AutoRead(2)");
    EXPECT_FALSE(timer.enabled());
    bench.click("AutoRead(3)");
    EXPECT_TRUE(timer.enabled());
    EXPECT_EQ(fire(), "3000/2 2000/2 ");
    bench.click("AutoRead(3)");
    EXPECT_FALSE(timer.enabled());
}

TEST(FictionalChip, SendsInItsShapeAndRestoresWhatWasAppliedLast) {
    LampBench bench;
    EXPECT_EQ(bench.session().SPIWordLength, 15);
    EXPECT_EQ(bench.session().SPIType, 2);
    bench.configure("24", {"optHex", "optLSBfirst"}); // while the panel is open
    bench.words.clear();
    bench.click("Cm_Blink_R");
    EXPECT_EQ(bench.words, "3000/2 ");
    EXPECT_EQ(bench.session().SPIWordLength, 24);
    EXPECT_NE(bench.session().MSBFirst, ConstOn);
    bench.panel.call("Form_Activate");
    EXPECT_EQ(bench.session().SPIWordLength, 15);
    bench.panel.call("Form_Unload");
    EXPECT_EQ(bench.session().SPIWordLength, 24);
    EXPECT_EQ(bench.session().SPIType, 1);
    EXPECT_EQ(bench.session().WordToSend.size(), 24U);
}

} // namespace
} // namespace bitlux::test
