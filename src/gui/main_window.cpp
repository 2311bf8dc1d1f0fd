#include "gui/main_window.h"

#include "gui/add_wait_view.h"
#include "gui/configure_view.h"
#include "gui/run_progress_view.h"
#include "gui/save_batch_view.h"
#include "gui/theme.h"

#include <algorithm>

#include <QCloseEvent>
#include <QDockWidget>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>

#include <fmt/format.h>

namespace bitlux::gui {

MainWindow::MainWindow(Program& program) : program_(program), binder_(program.forms()) {
    setWindowTitle(applicationTitle);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus); // it follows the focus of what is in it
    view_ = new MainView(program, binder_, scroll);
    scroll->setWidget(view_);
    setCentralWidget(scroll);
    bus_ = new QLabel(this);
    statusBar()->addWidget(bus_);
    statusBar()->setSizeGripEnabled(false); // the window's own border does that
    makeMenus();
    subscriptions_ = {
        binder_.flushed.follow([this] { updateStatus(); }),
        program_.forms().formShown.follow([this](forms::Form& form) { formShown(form); }),
        program_.ended.follow([this] { close(); }),
        program_.mainForm().multiple.progressChanged.follow([this] { followRun(); })};
    updateStatus();
}

void MainWindow::makeMenus() {
    MainForm& form = program_.mainForm();
    QMenu& file = *menuBar()->addMenu("&File");
    menuItem(file, form.files.itemOpen)->setShortcut(QKeySequence::Open);
    menuItem(file, form.files.itemSave)->setShortcut(QKeySequence::Save);
    menuItem(file, form.files.itemSaveAs)->setShortcut(QKeySequence::SaveAs);
    file.addSeparator();
    menuItem(file, form.log.itemSaveLog);
    menuItem(file, form.log.itemSaveLogAs);
    menuItem(file, form.log.itemClearLog);
    file.addSeparator();
    menuItem(file, form.itemExit)->setShortcut(QKeySequence::Quit);
    QMenu& configure = *menuBar()->addMenu("Co&nfigure");
    menuItem(configure, form.itemPortOptions);
    menuItem(configure, form.itemUpdateDongle);
    QMenu& view = *menuBar()->addMenu("&View");
    QAction* dark = view.addAction("&Dark");
    dark->setCheckable(true);
    dark->setChecked(isDark());
    connect(dark, &QAction::toggled, this, [](bool on) { applyTheme(on); });
}

QAction* MainWindow::menuItem(QMenu& menu, forms::MenuItem& item) {
    auto* action = new QAction(this);
    binder_.bind(item, *action);
    menu.addAction(action);
    return action;
}

void MainWindow::formShown(forms::Form& form) {
    if (!dialogs_.contains(&form))
        if (FormDialog* dialog = makeDialog(form))
            dialogs_[&form] = dialog;
    if (const auto found = dialogs_.find(&form); found != dialogs_.end())
        found->second->follow();
}

FormDialog* MainWindow::makeDialog(forms::Form& form) {
    if (auto* configure = dynamic_cast<ConfigureDialog*>(&form))
        return new ConfigureView(*configure, binder_, this);
    if (auto* saveBatch = dynamic_cast<SaveBatchForm*>(&form))
        return new SaveBatchView(*saveBatch, binder_, this);
    if (auto* addWait = dynamic_cast<AddWaitForm*>(&form))
        return new AddWaitView(*addWait, binder_, this);
    return nullptr; // the main form has this window
}

void MainWindow::updateStatus() {
    const Session& session = program_.session();
    const std::string bus =
        program_.engine().usesDongle() ? std::string("USB dongle")
        : session.ParallelPortReady
            ? fmt::format("Parallel port 0x{:X}",
                          static_cast<std::uint16_t>(session.LPTPortAddress))
            : std::string("No bus: plug in a dongle, or choose Configure, Edit Configuration, "
                          "Setup Parallel Port");
    const std::string shape =
        fmt::format("{} bits, type {}, {} first", session.SPIWordLength, session.SPIType,
                    session.MSBFirst == ConstOn ? "MSB" : "LSB");
    bus_->setText(QString::fromStdString(bus + "    " + shape));
}

void MainWindow::followRun() {
    if (progress_ == nullptr) {
        const MainForm& form = program_.mainForm();
        progress_ = new RunProgressView(form.multiple, form.run, binder_, this);
        statusBar()->addPermanentWidget(progress_);
    }
    binder_.flushSoon();
}

void MainWindow::fitToContent() {
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    int around = menuBar()->sizeHint().height() + statusBar()->sizeHint().height() + 8;
    int beside = 4;
    for (QDockWidget* dock : findChildren<QDockWidget*>()) {
        const bool below = dockWidgetArea(dock) == Qt::BottomDockWidgetArea;
        (below ? around : beside) += below ? dock->sizeHint().height() : dock->sizeHint().width();
        if (!below)
            beside += style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent);
    }
    const QSize wanted = view_->sizeHint() + QSize(beside, around);
    resize(std::min(std::max(wanted.width(), 720), screen.width()),
           std::min(std::max(wanted.height(), 620), screen.height()));
}

void MainWindow::closeEvent(QCloseEvent* event) {
    program_.close();
    for (const auto& [form, dialog] : dialogs_)
        dialog->hide();
    event->accept();
}

} // namespace bitlux::gui
