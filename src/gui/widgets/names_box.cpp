#include "gui/widgets/names_box.h"

#include <algorithm>

#include <QAbstractItemView>

namespace bitlux::gui {

NamesBox::NamesBox(WordNames& names, QWidget* parent) : QComboBox(parent), names_(names) {
    constexpr int shortest = 12; // letters
    setAccessibleName("Chip whose names are shown");
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(shortest);
    fill();
    connect(this, &QComboBox::activated, this,
            [this](int item) { names_.pick(itemData(item).toString().toStdString()); });
    changed_ = names_.changed.follow([this] { follow(); });
    follow();
}

void NamesBox::fill() {
    clear();
    addItem({}, QString());
    for (const std::string& name : names_.choices())
        addItem(QString::fromStdString(name), QString::fromStdString(name));
}

void NamesBox::follow() {
    const std::string current = names_.current();
    const QString automatic =
        current.empty() ? "No chip" : "Auto: " + QString::fromStdString(current);
    if (itemText(0) != automatic)
        setItemText(0, automatic);
    const QString picked = QString::fromStdString(names_.picked());
    if (currentData().toString() != picked)
        setCurrentIndex(std::max(0, findData(picked)));
    const QString tip = names_.problem().empty()
                            ? QString("Words are decoded with the names of this chip. The first "
                                      "choice is the chip whose "
                                      "tab or panel is open.")
                            : QString::fromStdString(names_.problem());
    if (toolTip() != tip)
        setToolTip(tip);
}

/// There may be chips that were not there before.
void NamesBox::showPopup() {
    fill();
    follow();
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->frameWidth() + 12);
    QComboBox::showPopup();
}

} // namespace bitlux::gui
