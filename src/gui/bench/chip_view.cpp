#include "gui/bench/chip_view.h"

#include "gui/desktop/theme.h"
#include "gui/widgets/window_place.h"

#include <algorithm>

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int indexRole = Qt::UserRole;
constexpr int refreshInterval = 250; // ms

/// Groups that are open initially; the line of a closed group says what is on.
bool startsOpen(const QString& group) {
    return group == "State" || group == "Dongle" || group == "Pins" || group == "Faults";
}

void showText(QTreeWidgetItem& item, const QString& text) {
    if (item.text(1) == text)
        return;
    item.setText(1, text);
    item.setToolTip(1, text);
}

} // namespace

ChipView::ChipView(VirtualBench& bench, Binder& binder, QWidget* parent)
    : QDockWidget("Chip", parent), bench_(bench) {
    setObjectName("chip");
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(8, 4, 8, 8);
    search_ = new QLineEdit(content);
    search_->setObjectName("chip.search");
    search_->setPlaceholderText("Find, as CAN WU");
    search_->setClearButtonEnabled(true);
    search_->installEventFilter(this);
    tree_ = new QTreeWidget(content);
    tree_->setObjectName("chip.tree");
    tree_->setAccessibleName("State and switches of the chip");
    tree_->setColumnCount(2);
    tree_->setHeaderHidden(true);
    tree_->setIndentation(14);
    tree_->setUniformRowHeights(true);
    tree_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tree_->header()->setStretchLastSection(false);
    tree_->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    tree_->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    content->setMinimumWidth(30 * fontMetrics().averageCharWidth());
    column->addWidget(search_);
    column->addWidget(tree_, 1);
    setWidget(content);
    chipChanged();
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { find(text); });
    connect(tree_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) { turn(*item); });
    connect(&clock_, &QTimer::timeout, this, [this] { follow(); });
    flushed_ = binder.flushed.follow([this] {
        if (isVisible())
            follow();
    });
}

QSize ChipView::sizeHint() const {
    return {44 * fontMetrics().averageCharWidth(), QDockWidget::sizeHint().height()};
}

void ChipView::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    clock_.start(refreshInterval);
    follow();
}

void ChipView::hideEvent(QHideEvent* event) {
    clock_.stop();
    QDockWidget::hideEvent(event);
}

void ChipView::chipChanged() {
    const QSignalBlocker quiet(tree_);
    tree_->clear();
    readings_.clear();
    switches_.clear();
    group("State");
    const std::vector<Reading> all = readings();
    for (const Reading& reading : all)
        if (reading.group != "Registers")
            addReading(reading);
    addSwitches();
    for (const Reading& reading : all)
        if (reading.group == "Registers")
            addReading(reading);
    find(search_->text());
    follow();
}

QTreeWidgetItem* ChipView::group(const QString& name) {
    for (int i = 0; i < tree_->topLevelItemCount(); ++i)
        if (tree_->topLevelItem(i)->text(0) == name)
            return tree_->topLevelItem(i);
    auto* item = new QTreeWidgetItem(tree_, {name});
    QFont bold = tree_->font();
    bold.setBold(true);
    item->setFont(0, bold);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setExpanded(startsOpen(name));
    return item;
}

void ChipView::addReading(const Reading& reading) {
    auto* item = new QTreeWidgetItem(group(QString::fromStdString(reading.group)),
                                     {QString::fromStdString(reading.name)});
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setFont(1, fixedFont());
    readings_.push_back(item);
}

void ChipView::addSwitches() {
    for (const ChipSwitch& one : bench_.dongle.chip()->switches()) {
        auto* item = new QTreeWidgetItem(group(QString::fromStdString(one.group)),
                                         {QString::fromStdString(one.name)});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
        item->setData(0, indexRole, static_cast<int>(switches_.size()));
        switches_.push_back(item);
    }
}

void ChipView::turn(QTreeWidgetItem& item) {
    const QVariant index = item.data(0, indexRole);
    if (!index.isValid())
        return;
    bench_.dongle.catchUp();
    bench_.dongle.chip()->turn(static_cast<std::size_t>(index.toInt()),
                               item.checkState(0) == Qt::Checked);
    follow();
}

void ChipView::find(const QString& typed) {
    const QString text = typed.trimmed();
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        QTreeWidgetItem& group = *tree_->topLevelItem(i);
        const bool whole = group.text(0).contains(text, Qt::CaseInsensitive);
        bool any = whole;
        for (int k = 0; k < group.childCount(); ++k) {
            const bool fits = whole || group.child(k)->text(0).contains(text, Qt::CaseInsensitive);
            group.child(k)->setHidden(!fits);
            any = any || fits;
        }
        group.setHidden(!any);
        group.setExpanded(text.isEmpty() ? startsOpen(group.text(0)) : any);
    }
}

/// Moves from the search field to the first match, and from there to the next.
void ChipView::goToHit() {
    std::vector<QTreeWidgetItem*> hits;
    for (QTreeWidgetItemIterator any(tree_, QTreeWidgetItemIterator::NotHidden); *any != nullptr;
         ++any)
        if (QTreeWidgetItem* group = (*any)->parent(); group != nullptr && group->isExpanded())
            hits.push_back(*any);
    if (hits.empty())
        return;
    const auto here = std::find(hits.begin(), hits.end(), tree_->currentItem());
    const bool isLast = here == hits.end() || here + 1 == hits.end();
    tree_->setCurrentItem(isLast ? hits.front() : *(here + 1));
    tree_->setFocus();
}

bool ChipView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != search_ || event->type() != QEvent::KeyPress ||
        dynamic_cast<QKeyEvent*>(event)->key() != Qt::Key_Down)
        return QDockWidget::eventFilter(watched, event);
    goToHit();
    return true;
}

void ChipView::openBeside(const QWidget& other) {
    if (!isFloating()) {
        setFloating(true);
        resize(sizeHint().width(), other.height());
        gui::openBeside(*this, other);
    }
    show();
    raise();
    activateWindow();
    search_->setFocus();
}

void ChipView::closeEvent(QCloseEvent* event) {
    QDockWidget::closeEvent(event);
    closed.raise();
}

/// In the order of the items: the registers last.
std::vector<Reading> ChipView::readings() const {
    std::vector<Reading> all = bench_.dongle.readings();
    for (Reading& reading : bench_.dongle.chip()->readings())
        all.push_back(std::move(reading));
    return all;
}

void ChipView::follow() {
    bench_.dongle.catchUp();
    const Chip* chip = bench_.dongle.chip();
    if (chip == nullptr)
        return;
    const QSignalBlocker quiet(tree_);
    const std::vector<Reading> all = readings();
    for (std::size_t i = 0; i < all.size(); ++i)
        showText(*readings_[i], QString::fromStdString(all[i].value));
    followSwitches(*chip);
    tree_->viewport()->update();
}

void ChipView::followSwitches(const Chip& chip) {
    for (std::size_t i = 0; i < switches_.size(); ++i) {
        const Qt::CheckState state = chip.isOn(i) ? Qt::Checked : Qt::Unchecked;
        if (switches_[i]->checkState(0) != state)
            switches_[i]->setCheckState(0, state);
    }
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        QTreeWidgetItem& group = *tree_->topLevelItem(i);
        QStringList on;
        for (int k = 0; k < group.childCount(); ++k)
            if (group.child(k)->checkState(0) == Qt::Checked)
                on << group.child(k)->text(0);
        showText(group, on.join(", "));
    }
}

} // namespace bitlux::gui
