#include "gui/window/about_view.h"

#include "gui/desktop/program_icon.h"
#include "gui/desktop/theme.h"

#include <QGridLayout>
#include <QLabel>

namespace bitlux::gui {

AboutView::AboutView(AboutForm& form, Binder& binder, QWidget* parent)
    : FormDialog(form, form.cmdOK, binder, parent) {
    constexpr int iconSize = 64;
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(18, 18, 18, 14);
    layout->setHorizontalSpacing(18);
    auto* icon = new QLabel(this);
    icon->setPixmap(programIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
    layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    auto* title = binder.make<QLabel>(form.lblTitle, this);
    title->setFont(scaled(title->font(), 1.5));
    layout->addWidget(title, 0, 1);
    int row = 1;
    for (forms::Label* line : {&form.lblVersion, &form.lblBuild}) {
        auto* label = binder.make<QLabel>(*line, this);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse); // to be copied into a report
        layout->addWidget(label, row++, 1);
    }
    auto* disclaimer = binder.make<QLabel>(form.lblDisclaimer, this);
    disclaimer->setWordWrap(true);
    disclaimer->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    layout->setRowMinimumHeight(row++, 4);
    layout->addWidget(disclaimer, row++, 1);
    layout->setRowMinimumHeight(row++, 4);
    layout->addWidget(makeButtons({&form.cmdOK, &form.cmdSysInfo}), row, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace bitlux::gui
