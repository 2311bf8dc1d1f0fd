#include "gui/bench/bench_view.h"
#include "panels/common/panel_form.h"
#include "window_bench.h"

#include <map>

#include <QAbstractButton>
#include <QDialog>
#include <QMenuBar>
#include <QTabBar>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Whose texts are access keys: those in sight in a window, by what Alt goes with.
std::map<std::string, QStringList> accessKeys(const QWidget& window) {
    std::map<std::string, QStringList> keys;
    const auto add = [&keys](const QString& text) {
        if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
            keys[key.toString().toStdString()] << text;
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            add(button->text());
        else if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            add(group->title());
        else if (const auto* label = qobject_cast<const QLabel*>(widget);
                 label != nullptr && label->buddy() != nullptr)
            add(label->text());
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                add(tabs->tabText(i));
        else if (const auto* menus = qobject_cast<const QMenuBar*>(widget))
            for (const QAction* menu : menus->actions())
                add(menu->text());
    }
    return keys;
}

/// The window with the bench below it, and a chip on that.
struct MnemonicsBench : WindowBench {
    MnemonicsBench() : WindowBench("zt72518d") {
        window.addDockWidget(
            Qt::BottomDockWidgetArea,
            new gui::BenchView(bench, program, "zt72518d", window.binder(), &window));
    }

    void expectUnique(const QWidget& shown, const std::string& where) {
        settle();
        for (const auto& [key, texts] : accessKeys(shown))
            EXPECT_EQ(texts.size(), 1)
                << where << ": " << key << ": " << texts.join(" | ").toStdString();
    }
    void expectUniqueInMain(const std::string& where) { expectUnique(window, where); }
    void turnTo(const char* tabs, int tab) {
        get<forms::TabStrip>(tabs).click(tab);
        settle();
    }
};

TEST(Mnemonics, AreUniqueInSightOnThePagesOfTheWindow) {
    for (const char* format : {"optBinary", "optHex"}) {
        MnemonicsBench bench;
        bench.configure("16", {format});
        for (const int log : {2, 1}) {
            bench.turnTo("frmMain.TabStripLogPinsNow", log);
            bench.expectUniqueInMain(std::string("single word, ") + format);
        }
        bench.turnTo("frmMain.TabStripMain", 2);
        bench.expectUniqueInMain("Batch");
    }
    MnemonicsBench bench;
    bench.program.dialog().CheckEnable72518.setValue(1);
    bench.program.dialog().cmdApply_Click();
    bench.turnTo("frmMain.TabStripMain", 3);
    bench.expectUniqueInMain("part");
}

TEST(Mnemonics, AreUniqueInSightInTheDialogs) {
    MnemonicsBench bench;
    bench.configure("16");
    bench.turnTo("frmMain.TabStripMain", 2);
    bench.click("frmMain.cmdSaveBatch");
    bench.click("frmMain.cmdAddWait");
    bench.choose("frmMain.itemAbout");
    bench.choose("frmMain.itemPortOptions");
    for (int page = 1; page <= 4; ++page) {
        bench.turnTo("frmConfigureSPI.TabStripConfig", page);
        const QList<QDialog*> dialogs = bench.window.findChildren<QDialog*>();
        EXPECT_EQ(dialogs.size(), 4);
        for (const QDialog* dialog : dialogs)
            bench.expectUnique(*dialog,
                               dialog->windowTitle().toStdString() + " " + std::to_string(page));
    }
}

TEST(Mnemonics, AreUniqueInSightInAPanel) {
    MnemonicsBench bench;
    for (const char* form : {"ZT72518", "TestMode", "ZT72516", "ZT72516ReadFlags",
                             "ZT72516TestMode", "ZT72537", "ZT72361"})
        bench.program.forms().show(form);
    const auto expectUniqueInDialogs = [&bench](const std::string& where) {
        for (const QDialog* dialog : bench.window.findChildren<QDialog*>())
            bench.expectUnique(*dialog, where);
    };
    for (const char* chip : {"zt72518", "zt72516", "zt72537", "zt72361"}) {
        PanelForm& panel = bench.program.panels().touch(chip);
        for (forms::TabStrip* strip : {&panel.outerTabs, &panel.registerTabs}) {
            for (std::size_t page = 1; page <= strip->tabs().size(); ++page) {
                strip->click(static_cast<int>(page));
                expectUniqueInDialogs(strip->tabs()[page - 1].caption);
            }
            for (int page = 1; !panel.shows("registers"); ++page)
                panel.outerTabs.click(page);
        }
    }
}

} // namespace
} // namespace bitlux::test
