#include "gui/screens/snapshot_screens.h"

#include "gui/panels/snapshot_report_view.h"
#include "gui/window/main_window.h"
#include "platform/forms/form_set.h"

#include <algorithm>
#include <string>
#include <vector>

#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

namespace bitlux::gui {

namespace {

constexpr std::uint64_t changedBits = 0b101;

void save(MainWindow& window, QWidget& shown, const QString& file) {
    constexpr int passes = 3;
    for (int pass = 0; pass < passes; ++pass) {
        window.binder().flush();
        QApplication::processEvents();
    }
    shown.grab().save(file + ".png");
}

/// A snapshot of the chip in which two bits of some registers differ; the first of these.
const RegisterItem* makeSnapshot(const RegisterCatalog& catalog, PanelForm& form,
                                 ScriptedDesk& desk, const std::string& file) {
    constexpr std::size_t step = 5;
    desk.fileDialogs.answer(file);
    form.set().perform("screens", [&form] { form.call("SaveSnapshot"); });
    if (!isSnapshotFile(file)) // the bus does not carry the words of the chip
        return nullptr;
    RegisterSnapshot snapshot = readSnapshot(file);
    for (std::size_t i = 0; i < snapshot.values.size(); i += step)
        snapshot.values[i].value ^= changedBits & catalog.item(snapshot.values[i].name).mask();
    saveSnapshot(catalog, snapshot, file);
    return snapshot.values.empty() ? nullptr : catalog.find(snapshot.values.front().name);
}

} // namespace

void paintSnapshots(MainWindow& window, QWidget& panel, PanelForm& form, ScriptedDesk& desk,
                    const QString& prefix, const QString& tail) {
    for (int tab = 1; !form.shows("registers"); ++tab)
        form.outerTabs.click(tab);
    const QTemporaryDir folder;
    const std::string file = folder.filePath("before.toml").toStdString();
    const RegisterCatalog catalog(std::make_shared<const chips::Chip>(form.chip()));
    const RegisterItem* first = makeSnapshot(catalog, form, desk, file);
    if (first == nullptr)
        return;
    desk.fileDialogs.answer(file);
    form.call("CompareSnapshot");
    const std::vector<std::string> pages = form.chip().registerPages();
    const auto page = std::find(pages.begin(), pages.end(), first->owner->page);
    if (page != pages.end())
        form.registerTabs.click(static_cast<int>(page - pages.begin()) + 1);
    save(window, panel, prefix + "-marks" + tail);
    auto* report = panel.findChild<QDialog*>("panel.report");
    save(window, *report, prefix + "-marks-report" + tail);
    report->close();
    auto* button = panel.findChild<QPushButton*>("panel.snapshots");
    QTimer::singleShot(0, button, [&] { // the menu is a loop of its own
        save(window, *button->menu(), prefix + "-marks-menu" + tail);
        button->menu()->close();
    });
    button->click();
    form.call("ClearMarks");
}

} // namespace bitlux::gui
