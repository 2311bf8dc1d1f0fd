#include "gui/window/main_window.h"

#include "gui/configure/configure_view.h"
#include "gui/desktop/theme.h"
#include "gui/help/help_window.h"
#include "gui/panels/companion_view.h"
#include "gui/panels/sheet_view.h"
#include "gui/waveform/waveform_view.h"
#include "gui/widgets/elided_label.h"
#include "gui/widgets/window_place.h"
#include "gui/window/about_view.h"
#include "gui/window/add_wait_view.h"
#include "gui/window/notice_view.h"
#include "gui/window/recent_menu.h"
#include "gui/window/recovered_menu.h"
#include "gui/window/run_progress_view.h"
#include "gui/window/save_batch_view.h"

#include <algorithm>

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QMenuBar>
#include <QMimeData>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>

#include <fmt/format.h>

namespace bitlux::gui {

namespace {

constexpr int leastSize = 200; ///< pixels of a usable window in each direction
constexpr const char* configurationEnding = ".spi";
constexpr const char* chipEnding = ".toml";

/// The file that is dragged, if it is a single configuration or chip.
QString draggedFile(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    QString name = urls.first().toLocalFile();
    for (const char* ending : {configurationEnding, chipEnding})
        if (name.endsWith(ending, Qt::CaseInsensitive))
            return name;
    return {};
}

std::string adapterText(const AdapterPort& port, std::int32_t clock) {
    const std::string name = "Adapter " + port.adapter().name();
    if (port.isOpen())
        return fmt::format("{}, {}", name, rateText(clock));
    return clock != 0 ? name + ", gone" : name;
}

} // namespace

MainWindow::MainWindow(Program& program, UserSettings settings)
    : program_(program),
      settings_(std::move(settings)),
      binder_(program.forms()),
      title_(program, *this) {
    setAcceptDrops(true);
    program.waveform().keepLast();
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus); // it scrolls to the widget with the focus
    view_ = new MainView(program, binder_, scroll);
    scroll->setWidget(view_);
    setCentralWidget(scroll);
    bus_ = new ElidedLabel(this);
    bus_->setObjectName("bus");
    bus_->setIndent(10);
    statusBar()->addWidget(bus_, 1);
    notice_ = new NoticeView(
        program.mainForm().notices, [this] { binder_.flushSoon(); }, this);
    statusBar()->addWidget(notice_);
    statusBar()->setSizeGripEnabled(false); // the window border does that
    makeMenus();
    binder_.bind(program.mainForm().unsaved.timer_keep, *new QTimer(this));
    constexpr int second = 1000;
    connect(&presence_, &QTimer::timeout, this, [this] {
        if (program_.session().USBReady)
            program_.dongle().checkPresence();
    });
    presence_.start(second);
    subscriptions_ = {
        binder_.flushed.follow([this] { refresh(); }),
        program_.forms().formShown.follow([this](forms::Form& form) { formShown(form); }),
        program_.forms().formGoing.follow([this](forms::Form& form) { formGoing(form); }),
        program_.ended.follow([this] {
            hideDialogs();
            QApplication::closeAllWindows();
        }),
        program_.helpRequested.follow([this] { showHelp(); }),
        program_.mainForm().files.fileUsed.follow([this] { noteFileUsed(); }),
        program_.mainForm().multiple.progressChanged.follow([this] { followRun(); }),
        program_.mainForm().run.continuousBegins.follow([this] { followRun(); }),
        program_.dongle().presenceChanged.follow([this] { binder_.flushSoon(); })};
    refresh();
}

MainWindow::~MainWindow() = default;

void MainWindow::makeMenus() {
    makeFileMenu();
    MainForm& form = program_.mainForm();
    QMenu& configure = *menuBar()->addMenu("Co&nfigure");
    menuItem(configure, form.itemPortOptions);
    configure.addSeparator();
    menuItem(configure, form.quickCommands.itemRestoreCommands);
    menuItem(configure, form.shape.itemAppliedWord);
    configure.addSeparator();
    menuItem(configure, form.itemUpdateDongle);
    QMenu& view = *menuBar()->addMenu("&View");
    addWaveformEntry(view, *this, program_);
    makeDarkEntry(view);
    makeHelpMenu();
}

void MainWindow::makeDarkEntry(QMenu& view) {
    dark_ = view.addAction("&Dark");
    dark_->setCheckable(true);
    dark_->setChecked(isDark());
    connect(dark_, &QAction::triggered, this, [this](bool on) {
        settings_.setDark(on);
        applyTheme(on);
        recolor();
    });
}

void MainWindow::recolor() {
    dark_->setChecked(isDark());
    binder_.refreshAll();
}

void MainWindow::makeHelpMenu() {
    MainForm& form = program_.mainForm();
    QMenu& help = *menuBar()->addMenu("&Help");
    QAction* topics = menuItem(help, form.itemHelpTopics);
    topics->setShortcut(QKeySequence::HelpContents);
    topics->setShortcutContext(Qt::ApplicationShortcut); // in the dialogs too
    help.addSeparator();
    menuItem(help, form.itemAbout);
}

void MainWindow::makeFileMenu() {
    MainForm& form = program_.mainForm();
    QMenu& file = *menuBar()->addMenu("&File");
    menuItem(file, form.files.itemOpen)->setShortcut(QKeySequence::Open);
    file.addMenu(new RecentMenu(
        settings_, [this](const QString& name) { openFile(name); }, this));
    file.addMenu(new RecoveredMenu([&form] { return form.unsaved.recovered(); },
                                   [this](const RecoveredFile& work) {
                                       program_.openRecovered(work);
                                       binder_.flushSoon();
                                   },
                                   this));
    menuItem(file, form.files.itemSave)->setShortcut(QKeySequence::Save);
    menuItem(file, form.files.itemSaveAs)->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    file.addSeparator();
    menuItem(file, form.itemOpenChip);
    file.addSeparator();
    menuItem(file, form.log.itemSaveLog);
    menuItem(file, form.log.itemSaveLogAs);
    menuItem(file, form.log.itemClearLog);
    menuItem(file, form.log.file.itemLogToFile);
    QAction* journal = menuItem(file, form.itemRecordJournal);
    journal->setCheckable(true);
    connect(&file, &QMenu::aboutToShow, journal,
            [this, journal] { journal->setChecked(program_.journal().isOn()); });
    file.addSeparator();
    addExit(file, form.itemExit);
}

void MainWindow::addExit(QMenu& menu, forms::MenuItem& item) {
    auto* exit = new QAction(this);
    binder_.bind(item, *exit);
    disconnect(exit, &QAction::triggered, exit, nullptr); // from the binding
    connect(exit, &QAction::triggered, this, [this] { program_.exit(); });
    exit->setShortcut(QKeySequence::Quit);
    menu.addAction(exit);
}

QAction* MainWindow::menuItem(QMenu& menu, forms::MenuItem& item) {
    auto* action = new QAction(this);
    binder_.bind(item, *action);
    connect(action, &QAction::triggered, this, [this] { binder_.flushSoon(); }); // for the title
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

void MainWindow::formGoing(forms::Form& form) {
    const auto found = dialogs_.find(&form);
    if (found == dialogs_.end())
        return;
    found->second->deleteLater(); // one of its buttons may have caused the unloading
    dialogs_.erase(found);
}

FormDialog* MainWindow::makeDialog(forms::Form& form) {
    if (auto* configure = dynamic_cast<ConfigureDialog*>(&form)) {
        auto* view = new ConfigureView(*configure, binder_, this);
        view->accepted.subscribe([this] {
            binder_.flush(); // words may now be typed instead of entered as bits
            view_->enterNextWord();
        });
        return view;
    }
    if (auto* saveBatch = dynamic_cast<SaveBatchForm*>(&form))
        return new SaveBatchView(*saveBatch, binder_, this);
    if (auto* addWait = dynamic_cast<AddWaitForm*>(&form))
        return new AddWaitView(*addWait, binder_, this);
    if (auto* about = dynamic_cast<AboutForm*>(&form))
        return new AboutView(*about, binder_, this);
    if (auto* panel = dynamic_cast<PanelForm*>(&form))
        return new PanelView(*panel, binder_, showModel_, this);
    if (auto* companion = dynamic_cast<CompanionForm*>(&form))
        return new CompanionView(*companion, binder_, this);
    if (auto* testMode = dynamic_cast<zt72518::TestModeForm*>(&form))
        return new SheetView(*testMode, testMode->sheet(), binder_, this);
    return nullptr; // the main form has this window
}

void MainWindow::refresh() {
    title_.follow();
    updateStatus();
}

void MainWindow::updateStatus() {
    const Session& session = program_.session();
    const std::string bus =
        program_.engine().usesDongle()
            ? std::string(program_.dongle().isPresent() ? "USB dongle" : "USB dongle, gone")
        : program_.adapters().inUse() != nullptr && session.ParallelPortReady
            ? adapterText(*program_.adapters().inUse(), session.AdapterClock)
        : session.ParallelPortReady
            ? fmt::format("Parallel port 0x{:X}",
                          static_cast<std::uint16_t>(session.LPTPortAddress))
            : std::string("No bus: plug in a dongle. Adapter or port: Edit Configuration, Setup "
                          "Parallel Port");
    const std::string shape =
        fmt::format("{} bits, type {}, {} first", session.SPIWordLength, session.SPIType,
                    session.MSBFirst == ConstOn ? "MSB" : "LSB");
    bus_->setText(QString::fromStdString(bus + "    " + shape));
    notice_->follow();
}

void MainWindow::followRun() {
    if (progress_ == nullptr) {
        MainForm& form = program_.mainForm();
        progress_ = new RunProgressView(
            [&form] { return shownRun(form.multiple, form.run, form.continuousCount); }, binder_,
            this);
        progress_->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
        statusBar()->addPermanentWidget(progress_);
    }
    binder_.flushSoon();
}

void MainWindow::fitToContent() {
    const QSize room = availableWindowSize(*this);
    int around = menuBar()->sizeHint().height() + statusBar()->sizeHint().height() + 8;
    int beside = 4;
    for (QDockWidget* dock : findChildren<QDockWidget*>()) {
        if (dock->isHidden() || dock->isFloating())
            continue;
        const bool below = dockWidgetArea(dock) == Qt::BottomDockWidgetArea;
        (below ? around : beside) += below ? dock->sizeHint().height() : dock->sizeHint().width();
        if (!below)
            beside += style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent);
    }
    const QSize wanted = view_->sizeHint() + QSize(beside, around);
    resize(wanted.expandedTo({720, 620}).boundedTo(room));
}

void MainWindow::restorePlace() {
    const QByteArray place = settings_.place();
    const bool known = !place.isEmpty() && restoreGeometry(place);
    // Whatever the file says, the window must be large enough to be seen and moved.
    const QSize least = size().boundedTo(normalGeometry().size());
    if (!known || least.width() < leastSize || least.height() < leastSize)
        fitToContent();
}

void MainWindow::noteFileUsed() {
    if (const std::string& name = program_.session().ConfigFileName; !name.empty())
        settings_.fileUsed(QString::fromStdString(name));
    binder_.flushSoon();
}

void MainWindow::openFile(const QString& fileName) {
    program_.open(fileName.toStdString());
    binder_.flushSoon();
}

void MainWindow::openDropped(const QString& fileName) {
    if (!fileName.endsWith(chipEnding, Qt::CaseInsensitive)) {
        openFile(fileName);
        return;
    }
    program_.openChip(fileName.toStdString());
    binder_.flushSoon();
}

void MainWindow::showHelp() {
    if (!help_)
        help_ = std::make_unique<HelpWindow>();
    help_->bringToFront();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && program_.running())
        program_.forms().activate(program_.mainForm());
    if (event->type() == QEvent::ThemeChange && !settings_.dark()) {
        applyDesktopTheme();
        recolor();
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    program_.close();
    if (program_.running()) { // the question of an earlier close is still open
        event->ignore();
        return;
    }
    settings_.setPlace(saveGeometry());
    hideDialogs();
    event->accept();
}

void MainWindow::hideDialogs() {
    for (const auto& [form, dialog] : dialogs_)
        dialog->hide();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!draggedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    // Later, so that the source of the drag need not wait for a box.
    QTimer::singleShot(0, this,
                       [this, name = draggedFile(*event->mimeData())] { openDropped(name); });
}

} // namespace bitlux::gui
