#include "gui/batch_view.h"

#include "gui/log_pins_view.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace bitlux::gui {

BatchView::BatchView(MainForm& form, Binder& binder, QWidget* parent)
    : QWidget(parent), form_(form), binder_(binder) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(makeLists(), 3);
    runPlace_ = new QWidget(this);
    layout->addWidget(runPlace_);
    layout->addWidget(new LogPinsView(form_, binder_, LogPinsView::Page::Batch, this), 2);
}

QWidget* BatchView::makeLists() {
    auto* widget = new QWidget(this);
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* available = binder_.make<LogView>(form_.commands.lstCommandsAvailable, widget);
    auto* toSend = binder_.make<LogView>(form_.commands.lstCommandsToSend, widget);
    grid->addWidget(available, 1, 0);
    grid->addWidget(toSend, 1, 2);
    return widget;
}

} // namespace bitlux::gui
