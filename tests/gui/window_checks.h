#pragma once

#include "gui/panels/bit_row.h"
#include "gui/panels/choice_option.h"
#include "panels/common/panel_form.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

namespace bitlux::test {

template <typename Widget>
std::vector<Widget*> inSight(const QWidget& window) {
    std::vector<Widget*> all;
    for (QWidget* any : window.findChildren<QWidget*>())
        if (auto* wanted = dynamic_cast<Widget*>(any); wanted != nullptr && any->isVisible())
            all.push_back(wanted);
    return all;
}

/// Turns to every page of a panel; `look` is handed the number of the page and of the tab in it.
template <typename Look>
void forEachPage(PanelForm& panel, Look look) {
    for (int page = panel.outerTabs.count(); page > 0; --page) {
        panel.outerTabs.click(page);
        const int inner = panel.shows("registers") ? panel.registerTabs.count() : 1;
        for (int tab = 1; tab <= inner; ++tab) {
            if (panel.shows("registers"))
                panel.registerTabs.click(tab);
            look(page, tab);
        }
    }
}

/// What the Tab key reaches, in one round.
inline std::vector<QWidget*> tabWalk(QWidget& window) {
    window.activateWindow();
    QApplication::processEvents();
    std::vector<QWidget*> reached;
    std::set<QWidget*> seen;
    if (window.focusWidget() == nullptr)
        QTest::keyClick(&window, Qt::Key_Tab);
    for (QWidget* at = window.focusWidget(); at != nullptr && seen.insert(at).second;
         at = window.focusWidget()) {
        reached.push_back(at);
        QTest::keyClick(at, Qt::Key_Tab);
    }
    return reached;
}

/// Whether one widget follows the other in reading order: below it, or to its right.
inline bool isFurtherOn(const QWidget& from, const QWidget& to) {
    const QWidget* shared = from.parentWidget();
    while (shared != nullptr && !shared->isAncestorOf(&to))
        shared = shared->parentWidget();
    const auto partIn = [shared](const QWidget& widget) {
        const QWidget* part = &widget;
        while (part->parentWidget() != shared)
            part = part->parentWidget();
        return part->geometry();
    };
    const QRect before = partIn(from);
    const QRect after = partIn(to);
    return after.top() > before.center().y() || after.left() > before.center().x();
}

/// All that takes the focus is reached by the Tab key, in the order in which it is read.
inline void expectReached(const std::string& where, QWidget& window, int allowed = 0) {
    const std::vector<QWidget*> reached = tabWalk(window);
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->objectName().contains('.') && widget->isVisible() && widget->isEnabled() &&
            widget->window() == &window && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
            widget->focusProxy() == nullptr) {
            EXPECT_EQ(std::count(reached.begin(), reached.end(), widget), 1)
                << where << ": " << widget->objectName().toStdString();
        }
    QStringList back; // once from the last one to the first
    for (std::size_t i = 0; i < reached.size(); ++i) {
        const QWidget& from = *reached[i];
        const QWidget& to = *reached[(i + 1) % reached.size()];
        if (!isFurtherOn(from, to))
            back << from.objectName() + " to " + to.objectName();
    }
    EXPECT_LE(back.size(), 1 + allowed) << where << ": " << back.join(", ").toStdString();
}

/// The texts in sight that each access key goes with.
inline std::map<std::string, QStringList> accessKeys(const QWidget& window) {
    std::map<std::string, QStringList> keys;
    const auto add = [&keys](const QString& text) {
        if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
            keys[key.toString().toStdString()] << text;
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            add(button->text());
        else if (const auto* group = qobject_cast<const QGroupBox*>(widget))
            add(group->title());
        else if (const auto* label = qobject_cast<const QLabel*>(widget);
                 label != nullptr && label->buddy() != nullptr)
            add(label->text());
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                add(tabs->tabText(i));
        else if (const auto* menus = qobject_cast<const QMenuBar*>(widget))
            for (const QAction* menu : menus->actions())
                add(menu->text());
    }
    return keys;
}

/// No two of them are the same.
inline void expectKeysApart(const std::string& where, const QWidget& window) {
    for (const auto& [key, texts] : accessKeys(window))
        EXPECT_EQ(texts.size(), 1)
            << where << ": " << key << ": " << texts.join(" | ").toStdString();
}

/// To assistive tools no two buttons are the same, and everything has a name.
inline void expectNamesApart(const std::string& where, const QWidget& window) {
    std::set<QString> names;
    for (const auto* button : inSight<QPushButton>(window)) {
        const QString name =
            button->accessibleName().isEmpty() ? button->text() : button->accessibleName();
        EXPECT_TRUE(names.insert(name).second) << where << ": " << name.toStdString() << " twice";
        EXPECT_FALSE(name == "Read" || name == "Write" || name == "Send" || name == "> Seq" ||
                     name == "READ" || name == "SEND")
            << where << ": " << button->objectName().toStdString();
    }
    for (const auto* entry : inSight<QLineEdit>(window))
        EXPECT_FALSE(entry->accessibleName().isEmpty() &&
                     entry->parentWidget()->accessibleName().isEmpty())
            << where << ": " << entry->objectName().toStdString();
}

/// No text is cut, and nothing is beside the window.
inline void expectReadable(const std::string& where, const QWidget& window) {
    for (const auto* cell : inSight<gui::BitCell>(window)) {
        EXPECT_GE(cell->width(), cell->readableWidth())
            << where << ": " << cell->objectName().toStdString();
        EXPECT_GE(cell->height(), cell->heightForWidth(cell->width()))
            << where << ": " << cell->objectName().toStdString();
    }
    for (const auto* option : inSight<gui::ChoiceOption>(window))
        EXPECT_GE(option->height(), option->heightForWidth(option->width()))
            << where << ": " << option->objectName().toStdString();
    for (const auto* area : inSight<QScrollArea>(window))
        EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << where;
}

} // namespace bitlux::test
