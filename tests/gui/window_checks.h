#pragma once

#include "gui/panels/bit_row.h"
#include "gui/panels/choice_option.h"

#include <set>
#include <string>
#include <vector>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace bitlux::test {

template <typename Widget>
std::vector<Widget*> inSight(const QDialog& window) {
    std::vector<Widget*> all;
    for (QWidget* any : window.findChildren<QWidget*>())
        if (auto* wanted = dynamic_cast<Widget*>(any); wanted != nullptr && any->isVisible())
            all.push_back(wanted);
    return all;
}

/// For those who hear them no two buttons look alike, and nothing has no name.
inline void expectNamesApart(const std::string& where, const QDialog& window) {
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
inline void expectReadable(const std::string& where, const QDialog& window) {
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
