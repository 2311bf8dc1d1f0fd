#include "gui/desktop/qt_desk.h"
#include "gui/desktop/theme.h"
#include "gui/window/recent_menu.h"
#include "support/chip_folder.h"
#include "window_bench.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QTimer>

#include <filesystem>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

QString nameOf(const std::string& name) {
    return QString::fromStdString(name);
}

struct RecentBench : WindowBench {
    RecentBench() { settle(); }
    void settle() {
        WindowBench::settle();
        emit window.findChild<QTimer*>("workTitle")->timeout({}); // not waited for
    }
    /// The entries of the menu as it opens.
    QList<QAction*> entries() {
        auto* menu = window.findChild<gui::RecentMenu*>();
        emit menu->aboutToShow();
        return menu->actions();
    }
    void save(const std::string& name) {
        session().ConfigFileName = folder.path(name);
        choose("frmMain.itemSave");
        settle();
    }
    bool drag(const std::string& name, bool drop) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(nameOf(folder.path(name)))});
        data.setText("file://" + nameOf(folder.path(name)));
        auto* field = window.findChild<QLineEdit*>("frmMain.txtHexWordToSend");
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(field, &enter);
        QDropEvent fall({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (drop)
            QApplication::sendEvent(field, &fall);
        settle(); // the file is opened later
        settle();
        return enter.isAccepted();
    }
};

TEST(RecentFiles, AreTheLastEightWithTheNewestFirst) {
    RecentBench bench;
    EXPECT_EQ(bench.entries().size(), 3);
    for (int i = 0; i < 9; ++i)
        bench.save("a&b " + std::to_string(i) + ".spi");
    bench.save("a&b 4.spi");
    const QList<QAction*> entries = bench.entries();
    ASSERT_EQ(entries.size(), 8 + 2);
    EXPECT_TRUE(entries[0]->text().startsWith("&1  a&&b 4.spi"));
    EXPECT_TRUE(entries[1]->text().startsWith("&2  a&&b 8.spi"));
    EXPECT_EQ(entries[7]->toolTip(), nameOf(bench.folder.path("a&b 1.spi")));
    entries[9]->trigger();
    EXPECT_EQ(bench.settings.recentFiles(), QStringList());
}

TEST(RecentFiles, OpenAndAreReportedWhenMissing) {
    RecentBench bench;
    bench.save("one.spi");
    bench.save("two.spi");
    bench.program.dialog().txtPartName.setText("changed");
    bench.entries()[1]->trigger();
    EXPECT_EQ(bench.session().ConfigFileName, bench.folder.path("one.spi"));
    EXPECT_EQ(bench.program.dialog().txtPartName.text(), "Generic");
    std::filesystem::remove(bench.folder.path("two.spi"));
    bench.boxes.takeTexts();
    bench.entries()[1]->trigger();
    EXPECT_EQ(bench.boxes.takeTexts(),
              std::vector{"There is no file " + bench.folder.path("two.spi")});
    EXPECT_EQ(bench.session().ConfigFileName, bench.folder.path("one.spi"));
}

TEST(RecentFiles, CanBeDroppedOnTheWindow) {
    RecentBench bench;
    bench.configure("8");
    bench.save("one.spi");
    bench.session().ConfigFileName.clear();
    bench.folder.write("notes.txt", "no configuration");
    EXPECT_FALSE(bench.drag("notes.txt", false));
    EXPECT_TRUE(bench.drag("one.spi", true));
    EXPECT_EQ(bench.session().ConfigFileName, bench.folder.path("one.spi"));
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "");
}

TEST(ChipFiles, CanBeDroppedOnTheWindow) {
    const ChipFolder user;
    const std::string chip = contentOf(user.add("lamp"));
    std::filesystem::remove(user.data.path("bitlux-forge/chips/lamp.toml"));
    RecentBench bench;
    bench.configure("8");
    bench.settle();
    bench.folder.write("Lamp.TOML", chip);
    EXPECT_TRUE(bench.drag("Lamp.TOML", true));
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{});
    EXPECT_EQ(contentOf(user.data.path("bitlux-forge/chips/Lamp.toml")), chip);
    EXPECT_EQ(bench.get<forms::TabStrip>("frmMain.TabStripMain").count(), 3);
    EXPECT_TRUE(bench.session().ConfigFileName.empty());

    bench.folder.write("Lamp.TOML", "[chip]");
    EXPECT_TRUE(bench.drag("Lamp.TOML", true));
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
}

TEST(FileDialogs, StartAtTheFileAndKnowTheExtension) {
    const TemporaryFolder folder;
    QString start;
    QTimer::singleShot(0, [&start] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
        start = name->text();
        name->setText("board 7");
        QTest::keyClick(name, Qt::Key_Return);
    });
    gui::QtFileDialogs dialogs;
    const std::optional<std::string> chosen =
        dialogs.ask({.kind = FileDialog::Kind::Save,
                     .title = "Save",
                     .filter = "SPI Config Files (*.spi)|*.spi|All Files (*.*)|*.*",
                     .fileName = folder.path("old.spi")});
    EXPECT_EQ(start, "old.spi");
    EXPECT_EQ(chosen, folder.path("board 7.spi"));
}

TEST(MainWindow, NamesTheFileInItsTitle) {
    RecentBench bench;
    EXPECT_EQ(bench.window.windowTitle(), "Bitlux Forge[*]");
    bench.save("one[*].spi");
    EXPECT_EQ(bench.window.windowTitle(), "one[*][*].spi[*] - Bitlux Forge");
    EXPECT_FALSE(bench.window.isWindowModified());
    bench.configure("8");
    bench.settle();
    EXPECT_TRUE(bench.window.isWindowModified());
    bench.save("one.spi");
    EXPECT_FALSE(bench.window.isWindowModified());
    bench.entries()[0]->trigger();
    bench.settle();
    EXPECT_EQ(bench.session().ConfigDirty, ConstOn);
    EXPECT_FALSE(bench.window.isWindowModified()) << "it was merely opened";
    bench.program.dialog().txtPartName.setText("ADC");
    bench.settle();
    EXPECT_TRUE(bench.window.isWindowModified());
    bench.program.dialog().txtPartName.setText("Generic");
    bench.settle();
    EXPECT_FALSE(bench.window.isWindowModified());
}

TEST(RecoveredMenu, OpensUnsavedWorkUnderTheNameOfItsFile) {
    RecentBench bench;
    auto& menu = *bench.window.findChild<QMenu*>("openRecovered");
    const auto entries = [&menu] {
        emit menu.aboutToShow();
        return menu.actions();
    };
    EXPECT_FALSE(entries().at(0)->isEnabled());
    bench.program.mainForm().unsaved.keepIn(bench.folder.path("state"));
    bench.save("a&b.spi");
    bench.program.dialog().txtPartName.setText("ADC");
    bench.program.open(bench.folder.path("a&b.spi"));
    ASSERT_EQ(entries().size(), 1);
    EXPECT_TRUE(menu.actions()[0]->text().startsWith("&1  a&&b.spi   "));
    EXPECT_EQ(menu.actions()[0]->toolTip(),
              "Unsaved changes of " + nameOf(bench.folder.path("a&b.spi")));
    menu.actions()[0]->trigger();
    bench.settle();
    EXPECT_EQ(bench.program.dialog().txtPartName.text(), "ADC");
    EXPECT_EQ(bench.window.windowTitle(), "a&b.spi (recovered)[*] - Bitlux Forge");
    EXPECT_TRUE(bench.window.isWindowModified());
    EXPECT_EQ(bench.settings.recentFiles(), QStringList{nameOf(bench.folder.path("a&b.spi"))});
}

TEST(MainWindow, ReopensAtItsLastPlace) {
    RecentBench bench;
    bench.window.resize(777, 655);
    bench.settle();
    bench.session().ConfigDirty = ConstOff;
    bench.window.close();
    TestBench other;
    gui::MainWindow again(other.program, bench.settings);
    again.restorePlace();
    EXPECT_EQ(again.size(), QSize(777, 655));

    // Whatever a damaged file says, the window can be reached with the mouse.
    const QByteArray whole = bench.settings.place();
    for (qsizetype byte = 0; byte < whole.size(); ++byte)
        for (const int value : {0, 0x80, 0xFF}) {
            QByteArray damaged = whole;
            damaged[byte] = static_cast<char>(value);
            bench.settings.setPlace(damaged);
            again.resize(900, 700);
            again.restorePlace();
            again.show();
            EXPECT_GE(again.width(), 200) << byte << " " << value;
            EXPECT_GE(again.height(), 200) << byte << " " << value;
            again.hide();
        }
}

TEST(MainWindow, IsDarkAsItsUserChoosesElseAsTheDesktop) {
    RecentBench bench;
    const auto desktopChanges = [&bench] {
        QEvent event(QEvent::ThemeChange);
        QApplication::sendEvent(&bench.window, &event);
        return gui::isDark();
    };
    auto& dark = *[&] {
        for (QAction* action : bench.window.findChildren<QAction*>())
            if (action->text() == "&Dark")
                return action;
        throw std::runtime_error("no action");
    }();
    gui::applyTheme(true); // as the desktop was
    EXPECT_FALSE(desktopChanges()) << "it is light, and nothing else was chosen";
    EXPECT_FALSE(dark.isChecked());
    EXPECT_EQ(bench.settings.dark(), std::nullopt);
    dark.trigger();
    EXPECT_TRUE(gui::isDark());
    EXPECT_EQ(bench.settings.dark(), true);
    EXPECT_TRUE(desktopChanges());
    dark.trigger();
    EXPECT_EQ(bench.settings.dark(), false);
    EXPECT_FALSE(gui::isDark());
}

} // namespace
} // namespace bitlux::test
