#include "gui/widgets/page_keys.h"

#include <vector>

#include <QShortcut>
#include <QTabBar>

namespace bitlux::gui {

namespace {

void turn(QTabBar& tabs, int step) {
    tabs.setCurrentIndex((tabs.currentIndex() + tabs.count() + step) % tabs.count());
}

} // namespace

void addPageKeys(QTabBar& tabs, QWidget& window) {
    const auto add = [&](const QKeySequence& keys, int step) {
        auto* shortcut = new QShortcut(keys, &window);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, &tabs, [&tabs, step] {
            if (tabs.count() > 0)
                turn(tabs, step);
        });
    };
    add(Qt::CTRL | Qt::Key_Tab, 1);
    add(Qt::CTRL | Qt::Key_PageDown, 1);
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, -1);
    add(Qt::CTRL | Qt::Key_PageUp, -1);
}

void putInTabOrder(QWidget& before, QWidget& page) {
    std::vector<QWidget*> fields; // collected before the order changes
    for (QWidget* any = page.nextInFocusChain(); any != nullptr && any != &page;
         any = any->nextInFocusChain())
        if (page.isAncestorOf(any) && any->focusPolicy() != Qt::NoFocus &&
            any->focusProxy() == nullptr)
            fields.push_back(any);
    QWidget* last = &before;
    for (QWidget* field : fields) {
        QWidget::setTabOrder(last, field);
        last = field;
    }
}

QWidget* firstField(QWidget& page) {
    for (QWidget* any = page.nextInFocusChain(); any != nullptr && any != &page;
         any = any->nextInFocusChain())
        if (page.isAncestorOf(any) && any->isVisibleTo(&page) && any->isEnabledTo(&page) &&
            (any->focusPolicy() & Qt::TabFocus) != 0)
            return any;
    return nullptr;
}

} // namespace bitlux::gui
