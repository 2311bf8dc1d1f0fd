#include "gui/window/batch_view.h"

#include "gui/window/copy_menu.h"
#include "gui/window/log_pins_view.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace bitlux::gui {

BatchView::BatchView(Program& program, Binder& binder, QWidget* parent)
    : QWidget(parent), program_(program), form_(program.mainForm()), binder_(binder) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(makeLists(), 3);
    layout->addWidget(makeBatchRow());
    runPlace_.room = new QWidget(this);
    layout->addWidget(runPlace_.room);
    layout->addWidget(new LogPinsView(program_, binder_, LogPinsView::Page::Batch, this), 2);
    flushed_ = binder_.flushed.follow([this] {
        const std::optional<RunProgress>& progress = form_.multiple.progress();
        toSend_->mark(progress ? static_cast<int>(progress->line) : -1);
    });
}

QWidget* BatchView::makeLists() {
    auto* widget = new QWidget(this);
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);
    const QString available = "Quick Commands";
    const QString toSend = "Commands to Send";
    grid->addWidget(new QLabel(available, widget), 0, 0);
    grid->addWidget(new QLabel(toSend, widget), 0, 2);
    grid->addWidget(makeList(form_.commands.lstCommandsAvailable, available, widget), 1, 0);
    grid->addWidget(makeButtons(widget), 1, 1);
    toSend_ = makeList(form_.commands.lstCommandsToSend, toSend, widget);
    toSend_->setMarkable(); // for the line that is played
    grid->addWidget(toSend_, 1, 2);
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(2, 3);
    return widget;
}

LogView* BatchView::makeList(forms::ListBox& control, const QString& title, QWidget* parent) {
    auto* list = binder_.make<LogView>(control, parent);
    list->setFont(QApplication::font()); // names need no digits of equal width
    list->setAccessibleName(title);
    addCopyMenu(*list, program_.copies(), [this, list](int line) {
        return program_.copies().ofQuickCommand(list->line(line).toStdString());
    });
    return list;
}

QWidget* BatchView::makeButtons(QWidget* parent) {
    CommandEditor& editor = form_.editor;
    auto* widget = new QWidget(parent);
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    const auto add = [&](std::initializer_list<forms::Button*> buttons) {
        for (forms::Button* button : buttons)
            column->addWidget(binder_.make<QPushButton>(*button, widget));
    };
    add({&editor.cmdAddMult, &editor.cmdAddPause, &editor.cmdAddWait});
    column->addSpacing(10);
    add({&editor.cmdRemoveMult, &editor.cmdMoveUpMult, &editor.cmdMoveDownMult,
         &editor.cmdClearMultiple});
    column->addStretch();
    return widget;
}

QWidget* BatchView::makeBatchRow() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel("Batch:", widget);
    auto* names = binder_.make<QComboBox>(form_.batches.cmbBatches, widget);
    names->setAccessibleName("Batch");
    row->addWidget(title);
    row->addWidget(names, 1);
    row->addWidget(binder_.make<QPushButton>(form_.batches.cmdSaveBatch, widget));
    auto* last = binder_.make<QPushButton>(form_.batches.cmdDeleteBatch, widget);
    row->addWidget(last);
    runPlace_.before = last;
    return widget;
}

} // namespace bitlux::gui
