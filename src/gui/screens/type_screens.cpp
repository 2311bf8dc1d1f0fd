#include "gui/screens/type_screens.h"

#include "gui/configure/type_diagram.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

/// All eight types on one sheet; `size` is that of a diagram.
void paintSheet(const QString& file, bool msbFirst, QSize size) {
    QWidget sheet;
    auto* grid = new QGridLayout(&sheet);
    for (int type = 1; type <= 8; ++type) {
        auto* box = new QGroupBox(QString("SPI type %1").arg(type), &sheet);
        auto* diagram = new TypeDiagram(type, box);
        diagram->setType(type, {.msbFirst = msbFirst, .selectedWhenHigh = !msbFirst});
        diagram->setFixedSize(size.isEmpty() ? diagram->minimumSizeHint() : size);
        (new QVBoxLayout(box))->addWidget(diagram);
        grid->addWidget(box, (type - 1) % 4, (type - 1) / 4);
    }
    sheet.grab().save(file);
}

} // namespace

void paintTypes(const QString& prefix, const QString& tail) {
    paintSheet(prefix + "-msb" + tail + ".png", true, {520, 190});
    paintSheet(prefix + "-lsb-smallest" + tail + ".png", false, {});
}

} // namespace bitlux::gui
