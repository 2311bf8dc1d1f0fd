#include "gui/panels/companion_view.h"

#include "gui/panels/flags_view.h"
#include "gui/panels/group_flow.h"
#include "gui/panels/last_word.h"
#include "gui/panels/panel_places.h"
#include "gui/panels/register_rows.h"
#include "gui/panels/sheet.h"
#include "platform/forms/form_set.h"

#include <QGuiApplication>
#include <QScreen>

namespace bitlux::gui {

CompanionView::CompanionView(CompanionForm& form, Binder& binder, QWidget* parent)
    : FormDialog(
          form, [&form] { form.setVisible(false); }, binder, parent),
      form_(form),
      widgets_{.controls = form.pageControls, .binder = binder} {
    setWindowFlags(Qt::Window);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeActions());
    auto* sheet = new Sheet(this);
    layout->addWidget(sheet, 1);
    auto* column = new QVBoxLayout(sheet->widget());
    column->setContentsMargins(0, 0, 0, 0);
    addRegisters(*column, sheet->widget());
    addViews(*column, sheet->widget());
    column->addStretch(1);
    const QSize wanted(fontMetrics().averageCharWidth() * 160, fontMetrics().height() * 44);
    resize(wanted.boundedTo(QGuiApplication::primaryScreen()->availableSize() - QSize(40, 60)));
}

QWidget* CompanionView::makeActions() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    for (const Action& action : actionsBeside(form_.chip(), form_.name()))
        row->addWidget(widgets_.button(*action.button, widget));
    row->addStretch();
    row->addWidget(new LastWord(form_.words, widget));
    return widget;
}

void CompanionView::addRegisters(QVBoxLayout& column, QWidget* parent) {
    static const PageExtras none;
    for (const chips::Register* shown : registersBeside(form_.chip(), form_.name()))
        column.addLayout(new RegisterRows(form_.chip(), {shown}, none, widgets_, parent));
}

void CompanionView::addViews(QVBoxLayout& column, QWidget* parent) {
    const std::vector<PlacedView> views = viewsBeside(form_.chip(), form_.name());
    if (views.empty())
        return;
    auto* grid = new RowGrid(widgets_, parent);
    column.addLayout(grid);
    addViewGroups(views, 1.0, *grid);
}

} // namespace bitlux::gui
