#include "gui/window/main_view.h"

#include "gui/desktop/theme.h"
#include "gui/panels/zt72517/pspi_view.h"
#include "gui/widgets/page_keys.h"
#include "gui/window/batch_view.h"
#include "gui/window/single_word_view.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int singleWordPage = 1;
constexpr int batchPage = 2;

} // namespace

MainView::MainView(Program& program, Binder& binder, QWidget* parent)
    : QWidget(parent), program_(program), form_(program.mainForm()), binder_(binder) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 10, 14, 12);
    layout->setSpacing(10);
    layout->addWidget(makeHeader());
    tabs_ = binder_.make<QTabBar>(form_.tabs.TabStripMain, this);
    tabs_->setExpanding(false);
    layout->addWidget(tabs_);
    addPageKeys(*tabs_, *this);
    pages_ = new QVBoxLayout;
    layout->addLayout(pages_, 1);
    runRow_ = new RunRow(form_.run, binder_, this);
    leaveOutUnusedControls();
    flushed_ = binder_.flushed.follow([this] { follow(); });
    follow();
}

QWidget* MainView::makeHeader() {
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = binder_.make<QLabel>(form_.labelMainTitle, header);
    title->setFont(scaled(title->font(), 1.35));
    title->setTextFormat(Qt::PlainText);
    title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // any part name fits
    row->addWidget(title, 1);
    row->addWidget(binder_.make<QLabel>(form_.lblConfigNag, header));
    return header;
}

void MainView::leaveOutUnusedControls() {
    for (const forms::Control* unused :
         {static_cast<forms::Control*>(&form_.Command1), static_cast<forms::Control*>(&form_.Text1),
          static_cast<forms::Control*>(&form_.Text2)})
        binder_.leaveOut(*unused);
}

bool MainView::focusIsHidden() const {
    const QWidget* focused = window()->focusWidget();
    return focused != nullptr && isAncestorOf(focused) && !focused->isVisibleTo(this);
}

/// When the page changes, the toolkit would move the focus to any next widget, also in another
/// pane.
bool MainView::focusNextPrevChild(bool next) {
    return focusIsHidden() || QWidget::focusNextPrevChild(next);
}

void MainView::follow() {
    for (int page = 1; page <= pageCount; ++page) {
        if (!frameOf(page).visible())
            continue;
        RunRow::Place& place = runPlaces_[static_cast<std::size_t>(page - 1)];
        if (place.room == nullptr)
            place = makePage(page);
        runRow_->moveTo(place);
    }
    if (focusIsHidden())
        tabs_->setFocus();
}

forms::Frame& MainView::frameOf(int page) const {
    return page == PartPage::chipPage ? form_.tabs.FrameChip : form_.tabs.FrameMain(page);
}

RunRow::Place MainView::makePage(int page) {
    RunRow::Place place;
    QWidget* widget = nullptr;
    if (page == singleWordPage) {
        singleWord_ = new SingleWordView(program_, binder_, *tabs_, this);
        place = singleWord_->runPlace();
        widget = singleWord_;
    } else if (page == batchPage) {
        auto* view = new BatchView(program_, binder_, this);
        place = view->runPlace();
        widget = view;
    } else {
        auto* view = new PartPage(form_.tabs, page, *tabs_, binder_, this);
        if (page == PartPage::pspiPage) {
            auto* shown = new PspiView(form_.pspi, program_.session(), *tabs_, binder_, view);
            view->add(*shown, shown->last());
        }
        place = view->runPlace();
        widget = view;
    }
    binder_.bind(frameOf(page), *widget);
    const bool isFirst = pages_->count() == 0;
    pages_->addWidget(widget);
    if (!isFirst) // else it already follows the tabs
        putInTabOrder(*tabs_, *widget);
    return place;
}

void MainView::focusEntry() {
    if (form_.singleWord.txtHexWordToSend.visible())
        form_.singleWord.txtHexWordToSend.setFocus();
    else
        form_.run.cmdSendOnce.setFocus();
}

void MainView::enterNextWord() {
    if (singleWord_ != nullptr)
        singleWord_->enterNextWord();
}

} // namespace bitlux::gui
