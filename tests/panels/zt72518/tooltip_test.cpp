#include "panels/panel_bench.h"

#include <set>
#include <sstream>

namespace bitlux::test {
namespace {

/// The high bytes of the words that went out, as "0x40"; commands to the dongle are none.
std::set<std::string> highBytes(const std::string& sent) {
    std::set<std::string> result;
    std::istringstream words(sent);
    bool isCommand = false;
    for (std::string word; words >> word;) {
        isCommand = isCommand || word.front() == '<';
        if (!isCommand)
            result.insert("0x" + word.substr(0, 2));
        isCommand = isCommand && word.back() != '>';
    }
    return result;
}

/// Presses whatever can be pressed; the number of buttons that sent words.
int pressAll(PanelBench& bench, const std::string& form) {
    int sending = 0;
    for (forms::Control* control : bench.program.forms().form(form).controls()) {
        auto* button = dynamic_cast<forms::Button*>(control);
        const bool plays = control->name() == "Cm_Run_Seq"; // what the lines say
        if (button == nullptr || plays || !button->enabled() || !button->visible())
            continue;
        if (button->name() == "Cm_CLEAR_lists")
            bench.boxes.answer(MessageBox::Answer::No);
        bench.trace.clear();
        button->click();
        const std::set<std::string> sent = highBytes(bench.sent());
        sending += sent.empty() ? 0 : 1;
        for (const std::string& high : sent)
            EXPECT_NE(button->tooltip().find(high), std::string::npos)
                << button->fullName() << " sends " << high << ", its tooltip says \""
                << button->tooltip() << '"';
    }
    return sending;
}

TEST(Tooltips, TellTheWordsOfEveryButton) {
    PanelBench bench;
    EXPECT_GT(pressAll(bench, "ZT72518"), 70);
    bench.program.forms().show("TestMode");
    EXPECT_GT(pressAll(bench, "TestMode"), 15);
}

TEST(Tooltips, TellTheBitsOfEveryChoice) {
    PanelBench bench;
    const auto control = [&](const char* name) -> forms::Control& {
        return bench.panel().control(name);
    };
    EXPECT_EQ(control("R_MUX(5)").tooltip(), "[7:5] = 101");
    EXPECT_EQ(control("R_Init_Vreg(2)").tooltip(), "[4:3] = 00");
    EXPECT_EQ(control("R_Init_Wd(6)").tooltip(), "[4] = 1");
    EXPECT_EQ(control("Ch_Init_Wdog(1)").tooltip(), "[7]");
    EXPECT_EQ(dynamic_cast<forms::Frame&>(control("init_vreg_frame(1)")).caption(),
              "VDD low reset duration [4:3]");
    EXPECT_EQ(control("Cm_ReadAll_Rh").tooltip(), "0x1D80, 0x2180, 0x2380, 0x2580, 0x2780, 0x2980");
}

} // namespace
} // namespace bitlux::test
