// Panels of chips that nobody has seen before: what their files say is all there is.

#include "bench/chosen_marker_files.h"
#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "panels/common/panel_form.h"
#include "window_bench.h"
#include "window_checks.h"

#include <set>
#include <string>

#include <QAccessible>
#include <QDialog>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A lamp driver of 15-bit words. Nothing has a name of its own.
constexpr const char* lamp = R"toml(
[chip]
title = "Lamp driver"
name = "lamp"
[word]
bits = 15
address = "13:12"
data = "11:0"
write = 0x4000
read = 0x0000
  [word.status]
  bits = ["READY", "HOT", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-", "FAULT"]
[variants]
titles = ["Indoor", "Outdoor"]
[[register]]
title = "Lamp"
address = 0
note = "Light and its limits. A change takes a millisecond."
bits = ["-", "LEVEL 0", "LEVEL 1", "LIMIT {0..7}", "BLINK"]
  [[register.field]]
  title = "Brightness"
  bits = "2:1"
  texts = ["off", "dim", "half", "full"]
  note = "Full needs a heat sink."
  [[register.field]]
  title = "Limit"
  bits = "10:3"
  texts = ["none", "1 A", "2 A", "3 A", "4 A"]
  codes = [0, 3, 9, 27, 81]
  typed = true
  [[register.field]]
  title = "Blink"
  bits = 11
  [[register.view]]
  title = "Read"
  row = "Lamp_W(0)" # what is read takes the place of what is written
[[register]]
title = "Fade"
address = 1
row = ""
width = 6
access = "write only"
  [[register.field]]
  title = "Time"
  bits = "3:0"
  texts = ["{0..9} s"]
  [[register.field]]
  title = "Curve"
  bits = "5:4"
  texts = ["straight", "bent"]
[[register]]
title = "Limits"
page = "Lamp"
address = 2
width = 12
zero = 0xC0C0FF
  [[register.view]]
  title = "Lamp flags"
  page = "Flags"
  zero = 0xC0C0FF
  bits = ["HOT", "OPEN", "SHORT", "-"]
  clears = true
[[command]]
title = "Restart"
word = 0x7FFF
note = "All registers lose what they hold."
[[command]]
title = "Wake"
word = 0x7FFE
page = "Status"
[[read_all]]
title = "Read everything"
group = "Lamp"
press = ["Cm_Lamp_R", "Cm_Limits_Lamp_flags"]
[panel]
pages = [
  { title = "Registers", shows = "registers" },
  { title = "Flags", shows = "flags" },
  { title = "Sequence", shows = "sequence" },
]
)toml";

/// Words of 48 bits with a wide register, and answers in four columns.
constexpr const char* wide = R"toml(
[chip]
title = "Wide one"
name = "wide"
[word]
bits = 48
address = "47:33"
data = "31:0"
write = 0x100000000
read = 0
[[register]]
title = "Channels"
address = 16
bits = ["CHANNEL_{0..31}"]
  [[register.field]]
  title = "All of them"
  bits = "31:16,7:0"
  texts = ["off", "on"]
  codes = [0, 0xFFFFFF]
[automatic_reads]
[sequence]
boxes = 3
asks_to_save = true
stops = {}
answers = [
  { list = "Answer3", title = "Byte 3" }, { list = "Answer2", title = "Byte 2" },
  { list = "Answer1", title = "Byte 1" }, { list = "Answer0", title = "Byte 0" },
]
)toml";

struct DescribedPanel : WindowBench {
    explicit DescribedPanel(const std::string& text) {
        chips::ChipFile file = chips::readChip(text, "chip.toml");
        if (!file.chip)
            throw std::runtime_error(chips::describe(file.problems, "chip.toml"));
        chip = file.chip;
        slot =
            std::make_unique<forms::FormSlot<PanelForm>>(program.forms(), chip->panel.form, [this] {
                return std::make_unique<PanelForm>(program.forms(), chip->panel.form, chip,
                                                   PanelSurroundings{.session = program.session(),
                                                                     .engine = program.engine(),
                                                                     .dongle = program.dongle(),
                                                                     .desk = parts,
                                                                     .markers = markers,
                                                                     .clock = clock});
            });
        program.forms().show(chip->panel.form);
        panel = window.findChild<QDialog*>();
        panel->resize(1024, 600);
        panel->activateWindow();
        settle();
    }
    ~DescribedPanel() { program.forms().unload(chip->panel.form); }

    PanelForm& form() { return slot->touch(); }

    /// Looks at every page; `look` is called on each.
    template <typename Look>
    void lookAtPages(Look look) {
        for (int page = form().outerTabs.count(); page > 0; --page) {
            form().outerTabs.click(page);
            const int inner = form().shows("registers") ? form().registerTabs.count() : 1;
            for (int tab = 1; tab <= inner; ++tab) {
                if (form().shows("registers"))
                    form().registerTabs.click(tab);
                settle();
                look();
            }
        }
    }

    std::string walked() {
        widget<QTabBar>(QString::fromStdString(form().outerTabs.fullName())).setFocus();
        QStringList names;
        for (const QWidget* widget : tabWalk(*panel))
            names << widget->objectName().section('.', 1);
        return names.join(' ').toStdString();
    }

    chips::ChipPtr chip;
    Desk parts = desk.desk();
    ChosenMarkerFiles markers;
    std::unique_ptr<forms::FormSlot<PanelForm>> slot;
    QDialog* panel = nullptr;
};

TEST(DescribedPanel, HasEveryControlInReachOfTheKeyboard) {
    for (const char* text : {lamp, wide}) {
        DescribedPanel bench(text);
        bench.lookAtPages([&bench] { expectReached("chip", *bench.panel); });
        for (const forms::Control* control : bench.form().controls()) {
            const bool isSpare = control->fullName() == "Panel_wide.Val_loop(2)";
            EXPECT_EQ(bench.window.binder().isLeftOut(*control), isSpare) << control->fullName();
            EXPECT_NE(bench.window.binder().isBound(*control), isSpare) << control->fullName();
        }
        EXPECT_LE(bench.panel->minimumSizeHint().width(), 1024);
        EXPECT_LE(bench.panel->minimumSizeHint().height(), 600);
    }
}

TEST(DescribedPanel, IsReadInTheOrderOfItsFile) {
    DescribedPanel bench(lamp);
    EXPECT_EQ(bench.walked(),
              "PanelTabs RegisterTabs Cm_Lamp_W Seq_Lamp_W Cm_Lamp_R Seq_Lamp_R Lamp_W(11) "
              "Lamp_Brightness(0) Lamp_Brightness(1) Lamp_Brightness(2) Lamp_Brightness(3) "
              "Lamp_Limit Lamp_Blink Cm_Limits_W Seq_Limits_W Limits_W(11) "
              "Variant(0) Variant(1) Cm_Read_everything Cm_Wake Seq_Wake");
}

TEST(DescribedPanel, BreaksWideRowsInTheMiddle) {
    DescribedPanel bench(wide);
    const auto bit = [&bench](int index) {
        return bench.widget<QLabel>(QString("Panel_wide.Channels_W(%1)").arg(index)).geometry();
    };
    EXPECT_EQ(bit(31).top(), bit(16).top());
    EXPECT_EQ(bit(15).left(), bit(31).left());
    EXPECT_GT(bit(15).top(), bit(31).bottom());
    EXPECT_EQ(bit(15).top(), bit(0).top());
}

TEST(DescribedPanel, ScrollsManyPagesOnASmallScreen) {
    std::string text = "[chip]\ntitle = 'Many'\n[word]\nbits = 24\naddress = '23:9'\n"
                       "data = '7:0'\nwrite = 0x100\nread = 0\n";
    for (int address = 0; address < 60; ++address)
        text += fmt::format("[[register]]\ntitle = 'R{0}'\naddress = {0}\nwidth = 8\n", address);
    DescribedPanel bench(text);
    EXPECT_LE(bench.panel->minimumSizeHint().height(), 600);
    bench.form().registerTabs.click(60);
    bench.settle();
    auto& tabs = bench.widget<QTabBar>("Panel_chip.RegisterTabs");
    EXPECT_TRUE(tabs.rect().contains(tabs.tabRect(59).center()));
    EXPECT_TRUE(bench.widget<QLabel>("Panel_chip.R59_W(0)").isVisible());
}

/// In a row whose zeros have a colour too the value is that of the ones, and each bit tells its
/// own.
TEST(DescribedPanel, TakesTheColoursOfARowForItsValue) {
    DescribedPanel bench(lamp);
    auto& bit = bench.widget<QLabel>("Panel_lamp.Limits_W(4)");
    const auto value = [&bit] {
        return bit.parentWidget()->findChildren<QLabel*>(QString()).first()->text();
    };
    EXPECT_EQ(value(), "0x000");
    const QImage zero = bit.grab().toImage();
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&bit);
    EXPECT_EQ(heard->role(), QAccessible::CheckBox);
    EXPECT_EQ(heard->state().checked, 0U);
    QTest::mouseClick(&bit, Qt::LeftButton);
    bench.settle();
    EXPECT_EQ(value(), "0x010");
    EXPECT_EQ(heard->state().checked, 1U);
    EXPECT_NE(bit.grab().toImage(), zero);
    EXPECT_EQ(bit.palette().color(QPalette::Window), QColor(0xC0, 0xFF, 0xFF));
}

TEST(DescribedPanel, ShowsTheWordThatWasSentLast) {
    DescribedPanel bench(lamp);
    bench.configure("8");
    bench.press("Panel_lamp.Cm_Wake");
    const QList<QLabel*> labels = bench.panel->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text() == "Sent 0x7FFE, received 0x7FFE";
    }));
}

} // namespace
} // namespace bitlux::test
