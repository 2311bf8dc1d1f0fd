#include "gui/screens/described_screens.h"

#include "bench/scripted_desk.h"
#include "chips/chip_library.h"
#include "gui/screens/form_picture.h"
#include "gui/screens/snapshot_screens.h"
#include "gui/window/main_window.h"
#include "platform/linux/user_marker_files.h"
#include "workbench/virtual_bench.h"

#include <memory>

#include <QApplication>
#include <QDialog>

#include <fmt/format.h>

namespace bitlux::gui {

void paintDescribed(const std::string& file, const QString& prefix, const QString& tail) {
    const chips::ChipFile read = chips::readChipFile(file);
    if (!read.chip) {
        fmt::print(stderr, "{}", chips::describe(read.problems, file));
        return;
    }
    VirtualClock clock;
    VirtualBench bench(clock, makeDevice("echo"));
    ScriptedDesk desk(clock);
    Program program(bench.hardware(), desk.desk());
    bench.wireFor(program.session());
    program.Main();
    bench.dongle.plug();
    program.mainForm().call("Start_USB");
    const std::string& name = read.chip->panel.form;
    const Desk surroundings = desk.desk();
    const UserMarkerFiles markers;
    forms::FormSlot<PanelForm> slot(program.forms(), name, [&] {
        return std::make_unique<PanelForm>(program.forms(), name, read.chip,
                                           PanelSurroundings{.session = program.session(),
                                                             .engine = program.engine(),
                                                             .dongle = program.dongle(),
                                                             .desk = surroundings,
                                                             .markers = markers,
                                                             .clock = clock});
    });
    MainWindow window(program);
    program.forms().show(name);
    QWidget& panel = *window.findChild<QDialog*>();
    panel.resize(1024, 600);
    PanelForm& form = *slot;
    for (int page = 1; page <= form.outerTabs.count(); ++page) {
        form.outerTabs.click(page);
        if (form.shows("registers"))
            saveRegisterPages(window, panel, form, prefix, tail);
        else
            savePicture(window, panel, prefix + QString("-page-%1").arg(page) + tail);
    }
    paintSnapshots(window, panel, form, desk, prefix, tail);
    program.forms().unload(name);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace bitlux::gui
