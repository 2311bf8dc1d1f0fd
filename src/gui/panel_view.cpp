#include "gui/panel_view.h"

#include "chips/zt72518/registers.h"
#include "gui/flags_view.h"
#include "gui/mode_diagram.h"
#include "gui/page_parts.h"
#include "gui/panel_status_view.h"
#include "gui/register_page_view.h"
#include "gui/sequence_view.h"
#include "gui/side_tabs.h"
#include "gui/watchdog_view.h"
#include "platform/forms/form_set.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QStackedWidget>
#include <QToolButton>

namespace bitlux::gui {

namespace chip = oldchips::zt72518;

namespace {

constexpr const char* formName = "ZT72518";
constexpr int outerTabs = 0;
constexpr int registerTabs = 1;

/// A page that is looked at for the first time is made and put where it is shown.
template <typename Make>
void showPage(QStackedWidget& stack, QWidget*& page, Make make) {
    if (page == nullptr) {
        page = make();
        stack.addWidget(page);
    }
    if (stack.currentWidget() != page)
        stack.setCurrentWidget(page);
}

} // namespace

PanelView::PanelView(zt72518::PanelForm& form, Binder& binder, QWidget* parent)
    : FormDialog(
          form, [&set = form.set()] { set.perform(formName, [&set] { set.unload(formName); }); },
          binder, parent),
      form_(form),
      binder_(binder),
      widgets_{.controls = form.pageControls, .binder = binder},
      pages_(new QStackedWidget(this)),
      madeRegisters_(chip::pages.size()) {
    setWindowFlags(Qt::Window);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PanelStatusView(form_, widgets_, this));
    layout->addWidget(makeTabs());
    layout->addWidget(pages_, 1);
    makeTimers();
    leaveOutCopies();
    flushed_ = binder_.flushed.follow([this] { followForm(); });
    formGoing_ = form.set().formGoing.follow([this](forms::Form& going) {
        if (&going == &form_)
            flushed_ = {};
    });
    followForm();
    const QSize wanted(fontMetrics().averageCharWidth() * 196, fontMetrics().height() * 51);
    resize(wanted.boundedTo(QGuiApplication::primaryScreen()->availableSize() - QSize(20, 50)));
}

void PanelView::keyPressEvent(QKeyEvent* event) {
    event->ignore();
}

QWidget* PanelView::makeTabs() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    auto* tabs = binder_.make<QTabBar>(form_.tab_518(outerTabs), widget);
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    row->addWidget(tabs, 1);
    auto* test = new QToolButton(widget);
    test->setText("Test Mode...");
    test->setAutoRaise(true);
    connect(test, &QToolButton::clicked, this, [this] { form_.set().show("TestMode"); });
    row->addWidget(test);
    return widget;
}

void PanelView::makeTimers() {
    for (forms::Timer* timer :
         {&form_.sequencer.player.Timer1, &form_.sequencer.autoReads.timer_auto,
          &form_.diagram.timer_auto_pre})
        binder_.bind(*timer, *new QTimer(this));
}

/// Whatever these do, what stands beside them or above all pages does as well:
/// - labels of the last word, of which the status row shows the first of each kind; the third one
///   counts ones, which the lit bits of the status row tell;
/// - the switches of automatic reading and of recording, which follow those of the status row;
/// - buttons of the watchdog that do what others do;
/// - the bars that pan the choice of variants, which is in sight as a whole.
void PanelView::leaveOutCopies() {
    for (const int label : {1, 2, 3, 8})
        binder_.leaveOut(*widgets_.controls.find({"Label_Liste", label}));
    for (const int box : {37, 38, 40})
        binder_.leaveOut(form_.sequencer.autoReads.read_auto(box));
    for (const int button : {8, 9, 10, 11, 14})
        binder_.leaveOut(form_.sequencer.watchdog.watchdog(button));
    binder_.leaveOut(form_.selection.HScroll1);
    binder_.leaveOut(form_.selection.VScroll1);
}

void PanelView::followForm() {
    const int page = form_.tab_518(outerTabs).selected();
    showPage(*pages_, made_.at(static_cast<std::size_t>(page - 1)),
             [this, page] { return makePage(page); });
    if (page == zt72518::PanelForm::RegistersPage)
        followRegisters();
}

QWidget* PanelView::makePage(int page) {
    switch (page) {
    case zt72518::PanelForm::SequencePage:
        return new SequenceView(form_.sequencer, binder_, pages_);
    case zt72518::PanelForm::Diagram:
        return new ModeDiagram(widgets_, pages_);
    case zt72518::PanelForm::FlagsPage:
        return new FlagsView(widgets_, pages_);
    case zt72518::PanelForm::WatchdogPage:
        return new WatchdogView(form_.sequencer, binder_, pages_);
    default:
        return makeRegisters();
    }
}

QWidget* PanelView::makeRegisters() {
    auto* widget = new QWidget(pages_);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    auto* tabs = new SideTabs(widget);
    binder_.bind(form_.tab_518(registerTabs), *tabs);
    row->addWidget(tabs, 0, Qt::AlignTop);
    registerPages_ = new QStackedWidget(widget);
    row->addWidget(registerPages_, 1);
    return widget;
}

void PanelView::followRegisters() {
    const int page = form_.tab_518(registerTabs).selected() - 1;
    showPage(*registerPages_, madeRegisters_.at(static_cast<std::size_t>(page)),
             [this, page] { return makeRegisterPage(page); });
}

QWidget* PanelView::makeRegisterPage(int page) {
    const chip::Page& shown = chip::pages.at(static_cast<std::size_t>(page));
    return new RegisterPageView(std::span(chip::registers)
                                    .subspan(static_cast<std::size_t>(shown.firstRegister),
                                             static_cast<std::size_t>(shown.count)),
                                pageParts(shown, form_, widgets_), widgets_, registerPages_);
}

} // namespace bitlux::gui
