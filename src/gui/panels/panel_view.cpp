#include "gui/panels/panel_view.h"

#include "gui/panels/flags_view.h"
#include "gui/panels/panel_side_view.h"
#include "gui/panels/panel_status_view.h"
#include "gui/panels/register_page_view.h"
#include "gui/panels/sequence_view.h"
#include "gui/panels/side_tabs.h"
#include "gui/panels/snapshot_button.h"
#include "gui/widgets/page_keys.h"
#include "gui/widgets/window_place.h"
#include "platform/forms/form_set.h"

#include <QKeyEvent>
#include <QStackedWidget>

namespace bitlux::gui {

namespace {

/// Makes a page that is shown for the first time, in its place; true if it did.
template <typename Make>
bool showPage(QStackedWidget& stack, QWidget*& page, Make make) {
    const bool isNew = page == nullptr;
    if (isNew) {
        page = make();
        stack.addWidget(page);
    }
    if (stack.currentWidget() != page) {
        // Hidden pages do not affect the size of the window.
        stack.currentWidget()->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        page->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        stack.setCurrentWidget(page);
    }
    return isNew;
}

std::function<void()> unloads(const forms::Form& form) {
    return [&set = form.set(), name = form.name()] {
        set.perform(name, [&set, &name] { set.unload(name); });
    };
}

} // namespace

PanelView::PanelView(PanelForm& form, Binder& binder, const ShowModel& showModel, QWidget* parent)
    : FormDialog(form, unloads(form), binder, parent),
      form_(form),
      binder_(binder),
      widgets_{.controls = form.pageControls, .binder = binder},
      extras_(extrasOf(form, widgets_)),
      registerTitles_(form.chip().registerPages()),
      pages_(new QStackedWidget(this)),
      made_(form.chip().panel.pages.size()),
      madeRegisters_(registerTitles_.size()) {
    setWindowFlags(Qt::Window);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PanelStatusView(form_, extras_, widgets_, this));
    auto* column = new QVBoxLayout;
    column->addWidget(makeTabs(showModel));
    column->addWidget(pages_, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addLayout(column, 1);
    if (hasViewsBesidePages(form.chip())) {
        side_ = new PanelSideView(form_, extras_, widgets_, this);
        row->addWidget(side_);
    }
    layout->addLayout(row, 1);
    makeTimers();
    for (const forms::Control* copy : extras_.copies)
        binder_.leaveOut(*copy);
    flushed_ = binder_.flushed.follow([this] { followForm(); });
    formGoing_ = form.set().formGoing.follow([this](forms::Form& going) {
        if (&going == &form_)
            flushed_ = {};
    });
    followForm();
    resize(fontMetrics().averageCharWidth() * 196, fontMetrics().height() * 51);
    openBeside(*this, *parent->window());
}

void PanelView::keyPressEvent(QKeyEvent* event) {
    event->ignore();
}

QWidget* PanelView::makeTabs(const ShowModel& showModel) {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    auto* tabs = binder_.make<QTabBar>(form_.outerTabs, widget);
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    addPageKeys(*tabs, *this);
    row->addWidget(tabs, 1);
    for (const chips::Companion& any : form_.chip().panel.described)
        if (any.button.exists())
            row->addWidget(widgets_.button(any.button, widget));
    for (const MakeWidget& make : extras_.besideTabs)
        row->addWidget(make(widget));
    row->addWidget(new SnapshotButton(form_, widget));
    if (showModel)
        row->addWidget(makeModelButton(showModel, widget));
    return widget;
}

QWidget* PanelView::makeModelButton(const ShowModel& showModel, QWidget* parent) {
    auto* button = new QPushButton("Chip on the bench", parent);
    button->setObjectName("panel.model");
    button->setToolTip("Shows the model of this chip: its state, its flags, pins and faults");
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this,
            [this, showModel] { showModel(form_.chip(), *this); });
    return button;
}

void PanelView::makeTimers() {
    for (forms::Control* control : form_.controls())
        if (auto* timer = dynamic_cast<forms::Timer*>(control))
            binder_.bind(*timer, *new QTimer(this));
}

void PanelView::followForm() {
    const auto page = static_cast<std::size_t>(form_.outerTabs.selected() - 1);
    const bool isSequence = form_.shows("sequence"); // its lists use the space
    if (side_ != nullptr && isSequence)
        side_->hide();
    if (showPage(*pages_, made_.at(page), [this, page] { return makePage(page); }))
        putSideLast();
    if (side_ != nullptr && !isSequence)
        side_->show();
    if (form_.shows("registers"))
        followRegisters();
}

QWidget* PanelView::makePage(std::size_t page) {
    const std::string& shows = form_.chip().panel.pages.at(page).shows;
    if (shows == "registers")
        return makeRegisters();
    if (shows == "flags")
        return new FlagsView(form_.chip(), page, widgets_, pages_);
    if (shows == "sequence")
        return new SequenceView(form_, extras_.sequence, widgets_, pages_);
    if (const auto found = extras_.pages.find(shows); found != extras_.pages.end())
        return found->second(pages_);
    return new QLabel(QString("This panel has no page \"%1\".").arg(textOf(shows)), pages_);
}

QWidget* PanelView::makeRegisters() {
    auto* widget = new QWidget(pages_);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    auto* tabs = new SideTabs(widget);
    binder_.bind(form_.registerTabs, *tabs);
    row->addWidget(tabs, 0, Qt::AlignTop);
    registerPages_ = new QStackedWidget(widget);
    row->addWidget(registerPages_, 1);
    return widget;
}

void PanelView::followRegisters() {
    const auto page = static_cast<std::size_t>(form_.registerTabs.selected() - 1);
    if (page < registerTitles_.size() && // a chip may have none
        showPage(*registerPages_, madeRegisters_.at(page),
                 [this, page] { return makeRegisterPage(registerTitles_[page]); }))
        putSideLast();
}

void PanelView::putSideLast() {
    if (side_ == nullptr)
        return;
    QWidget* last = previousInFocusChain();
    for (QWidget* any : side_->findChildren<QWidget*>())
        if ((any->focusPolicy() & Qt::TabFocus) != 0) {
            setTabOrder(last, any);
            last = any;
        }
}

QWidget* PanelView::makeRegisterPage(const std::string& page) {
    static const PageExtras none;
    const auto extras = extras_.registerPages.find(page);
    return new RegisterPageView(form_.chip(), page,
                                extras == extras_.registerPages.end() ? none : extras->second,
                                widgets_, registerPages_);
}

} // namespace bitlux::gui
