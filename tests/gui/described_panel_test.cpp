// Panels of chips that only their files describe.

#include "bench/chosen_marker_files.h"
#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "support/lamp_chip.h"
#include "support/temporary_folder.h"
#include "window_bench.h"
#include "window_checks.h"

#include <string>

#include <QAccessible>
#include <QDialog>
#include <QMenu>
#include <QTreeWidget>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Words of 48 bits with a wide register, and answers in four columns.
constexpr const char* wide = R"toml(
chip = { title = "Wide one", name = "wide" }
word = { bits = 48, address = "47:33", data = "31:0", write = 0x100000000, read = 0 }
register = [
  { title = "Channels", address = 16, bits = ["CHANNEL_{0..31}"], zero = 0xC0C0FF, field = [
    { title = "All of them", bits = "31:16,7:0", texts = ["off", "on"], codes = [0, 0xFFFFFF] },
  ] },
]
automatic_reads = {}
sequence = { boxes = 3, asks_to_save = true, stops = {}, answers = [
  { list = "Answer3", title = "Byte 3" }, { list = "Answer2", title = "Byte 2" },
  { list = "Answer1", title = "Byte 1" }, { list = "Answer0", title = "Byte 0" },
] }
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

    chips::ChipPtr chip;
    Desk parts = desk.desk();
    ChosenMarkerFiles markers;
    std::unique_ptr<forms::FormSlot<PanelForm>> slot;
    QDialog* panel = nullptr;
};

TEST(DescribedPanel, HasEveryControlInReachOfTheKeyboard) {
    for (const char* text : {lampChip, wide}) {
        DescribedPanel bench(text);
        forEachPage(bench.form(), [&bench](int, int) {
            bench.settle();
            expectReached("chip", *bench.panel);
        });
        for (const forms::Control* control : bench.form().controls()) {
            const bool isSpare = control->fullName() == "Panel_wide.Val_loop(2)";
            EXPECT_EQ(bench.window.binder().isLeftOut(*control), isSpare) << control->fullName();
            EXPECT_NE(bench.window.binder().isBound(*control), isSpare) << control->fullName();
        }
        EXPECT_LE(bench.panel->minimumSizeHint().width(), 1024);
        EXPECT_LE(bench.panel->minimumSizeHint().height(), 600);
    }
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
    auto& tabs = bench.widget<QTabBar>("Panel_chip.RegisterTabs");
    EXPECT_TRUE(tabs.rect().contains(tabs.tabRect(59).center()));
    EXPECT_TRUE(bench.widget<QLabel>("Panel_chip.R59_W(0)").isVisible());
}

/// In a row whose zeros have a colour too the value is that of the ones, and each bit shows its
/// own.
TEST(DescribedPanel, TakesTheColoursOfARowForItsValue) {
    DescribedPanel bench(wide);
    auto& bit = bench.widget<QLabel>("Panel_wide.Channels_W(4)");
    const auto value = [&bit] {
        return bit.parentWidget()->findChildren<QLabel*>(QString()).first()->text();
    };
    EXPECT_EQ(value(), "0x00000000");
    const QImage zero = bit.grab().toImage();
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&bit);
    EXPECT_EQ(heard->role(), QAccessible::CheckBox);
    EXPECT_EQ(heard->state().checked, 0U);
    QTest::mouseClick(&bit, Qt::LeftButton);
    bench.settle();
    EXPECT_EQ(value(), "0x00000010");
    EXPECT_EQ(heard->state().checked, 1U);
    EXPECT_NE(bit.grab().toImage(), zero);
    EXPECT_EQ(bit.palette().color(QPalette::Window), QColor(0xC0, 0xFF, 0xFF));
}

/// The menu opens by the keyboard, and is not made before. A mark is drawn, exposed to assistive
/// tools, and cleared.
TEST(DescribedPanel, MarksTheBitsThatASnapshotHasOtherwise) {
    DescribedPanel bench(lampChip);
    bench.configure("8");
    const TemporaryFolder folder;
    bench.fileDialogs.answer(
        folder.write("a.toml", "[snapshot]\nchip = \"chip\"\n[values]\nLamp = 0x804\nBlink = 0\n"));
    auto& button = bench.widget<QPushButton>("panel.snapshots");
    auto& bit = bench.widget<QLabel>("Panel_chip.Lamp_R(2)");
    const QImage plain = bit.grab().toImage();
    EXPECT_EQ(button.menu(), nullptr);
    button.setFocus();
    QTimer::singleShot(0, &button, [] { // the menu is a loop of its own
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_C);
    });
    QTest::keyClick(&button, Qt::Key_Space);
    bench.settle();

    auto& report = bench.widget<QDialog>("panel.report");
    EXPECT_TRUE(report.isVisible());
    EXPECT_EQ(report.windowTitle(), "Lamp driver: Compare");
    EXPECT_EQ(bench.widget<QLabel>("panel.report.heading").text(),
              "Different from a.toml: 1 of 2 registers.");
    const QTreeWidgetItem& line =
        *bench.widget<QTreeWidget>("panel.report.registers").topLevelItem(0);
    const auto texts = [](const QTreeWidgetItem& item) {
        return QStringList({item.text(0), item.text(1), item.text(2)}).join('|');
    };
    EXPECT_EQ(texts(line), "Lamp|0x804|0x000");
    EXPECT_EQ(texts(*line.child(0)), "Blink|1|0");
    EXPECT_EQ(texts(*line.child(1)), "Brightness|half|off");
    EXPECT_NE(bit.grab().toImage(), plain);
    EXPECT_EQ(bit.accessibleName(), "bit 2 LEVEL 1, differs");
    bench.press("panel.report.clear");
    EXPECT_EQ(bit.grab().toImage(), plain);
    EXPECT_EQ(bit.accessibleName(), "bit 2 LEVEL 1");
}

TEST(DescribedPanel, ShowsTheWordThatWasSentLast) {
    DescribedPanel bench(lampChip);
    bench.configure("8");
    bench.press("Panel_chip.Cm_Lamp_W");
    const QList<QLabel*> labels = bench.panel->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text() == "Sent 0x4000, received 0x4000";
    }));
}

} // namespace
} // namespace bitlux::test
