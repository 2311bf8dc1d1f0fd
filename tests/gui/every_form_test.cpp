// Every page of every form in the window: each control has its widget, in reach of the keyboard in
// the order of reading, with a name and an access key of its own, and readable on a small screen.

#include "gui/bench/bench_view.h"
#include "window_bench.h"
#include "window_checks.h"

#include <QDialog>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct Tour : WindowBench {
    Tour() : WindowBench("zt72518d") { gui::addBench(window, bench, "zt72518d"); }

    void look(const std::string& where, QWidget& shown, int jumpsBack = 0) {
        settle(); // makes a page that is looked at for the first time
        settle();
        expectReached(where, shown, jumps.contains(where) ? jumps.at(where) : jumpsBack);
        expectKeysApart(where, shown);
    }
    /// Beside the pages are the bench, and buttons for scrolling the tabs.
    void lookAtMain(const std::string& where) { look(where, window, 1); }
    void lookAtPanel(const std::string& where, QWidget& shown) {
        shown.resize(1024, 600);
        look(where, shown);
        EXPECT_LE(shown.height(), 600) << where;
        expectNamesApart(where, shown);
        expectReadable(where, shown);
    }

    /// Ways back within a page: where it is drawn as a diagram, where options precede a field.
    const std::map<std::string, int> jumps{
        {"zt72518, 2, 1", 3}, {"zt72516, 2, 1", 2}, {"zt72537, 1, 6", 1}};

    void pages() {
        auto& tabs = get<forms::TabStrip>("frmMain.TabStripMain");
        for (const char* format : {"optBinary", "optHex"}) {
            configure("40", {format});
            for (const int log : {2, 1}) {
                get<forms::TabStrip>("frmMain.TabStripLogPinsNow").click(log);
                lookAtMain(std::string("single word, ") + format);
            }
        }
        tabs.click(2);
        for (const int log : {2, 1}) {
            get<forms::TabStrip>("frmMain.TabStripLogPins").click(log);
            lookAtMain("Batch");
        }
        ConfigureDialog& parts = program.dialog();
        for (forms::CheckBox* part :
             {&parts.CheckEnable72361, &parts.CheckEnable72517, &parts.CheckEnable72518,
              &parts.CheckEnable72537, &parts.CheckEnable72516}) {
            part->setValue(1);
            parts.cmdApply_Click();
            tabs.click(3);
            lookAtMain(part->fullName());
            part->setValue(0);
        }
        auto& chipPage = get<forms::Frame>("frmMain.FrameChip"); // of a user's chip
        chipPage.show();
        settle();
        chipPage.hide();
    }
    void dialogs() {
        click("frmMain.cmdSaveBatch");
        click("frmMain.cmdAddWait");
        choose("frmMain.itemAbout");
        choose("frmMain.itemPortOptions");
        for (const char* form : {"frmSaveBatch", "frmAddWait", "frmAbout"})
            look(form, *dialog(form));
        for (int page = 1; page <= 4; ++page) {
            get<forms::TabStrip>("frmConfigureSPI.TabStripConfig").click(page);
            look("frmConfigureSPI, page " + std::to_string(page), *dialog("frmConfigureSPI"));
        }
    }
    void panel(const std::string& chip) {
        PanelForm& panel = program.panels().touch(chip);
        if (chip == "zt72518") // where the marker file is there
            for (const char* choice : {"vb_otp(0)", "opt_vb(0)", "opt_vb(1)"})
                panel.control(choice).show();
        program.forms().show(panel.name());
        forEachPage(panel, [&](int page, int tab) {
            settle();
            const std::string where = fmt::format("{}, {}, {}", chip, page, tab);
            if (chip == "zt72518")
                look(where, *dialog(panel.name()));
            else
                lookAtPanel(where, *dialog(panel.name()));
        });
    }
};

TEST(EveryForm, IsUsableByKeyboardAndHasAWidgetForEveryControl) {
    Tour tour;
    tour.pages();
    tour.dialogs();
    for (const char* chip : {"zt72518", "zt72516", "zt72537", "zt72361"})
        tour.panel(chip);
    for (const char* form : {"TestMode", "ZT72516ReadFlags", "ZT72516TestMode"}) {
        tour.program.forms().show(form);
        tour.lookAtPanel(form, *tour.dialog(form));
    }
    std::set<std::string> controls;
    for (const std::string& name : tour.program.forms().names())
        for (const forms::Control* control : tour.program.forms().form(name).controls())
            if (!tour.window.binder().isLeftOut(*control)) {
                controls.insert(control->fullName());
                EXPECT_TRUE(tour.window.binder().isBound(*control)) << control->fullName();
            }
    for (const QObject* object : tour.window.findChildren<QObject*>()) {
        const std::string name = object->objectName().toStdString();
        if (name.starts_with("frm") || name.starts_with("ZT72") || name.starts_with("TestMode.")) {
            EXPECT_EQ(controls.erase(name), 1U) << name << " twice or without a control";
        }
    }
    EXPECT_TRUE(controls.empty()) << *controls.begin();
}

} // namespace
} // namespace bitlux::test
