#include "gui/window/log_view.h"

#include <string>
#include <vector>

#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Counts how often it is asked for a line.
struct CountedLines : forms::LineSource {
    std::vector<std::string> lines;
    mutable int made = 0;

    CountedLines(std::size_t count, const std::string& text) : lines(count, text) {}
    [[nodiscard]] std::size_t size() const override { return lines.size(); }
    [[nodiscard]] std::string line(std::size_t index) const override {
        ++made;
        return lines.at(index);
    }
};

/// A list that is shown, above a field that can take the focus.
struct ShownList {
    QWidget window;
    gui::LogView* view = new gui::LogView(&window);
    QLineEdit* field = new QLineEdit(&window);

    explicit ShownList(const CountedLines& lines) {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(view);
        column->addWidget(field);
        view->showLines(lines, static_cast<int>(lines.size()), -1);
        window.resize(200, 300);
        window.show();
        window.activateWindow();
        turn();
    }
    static void turn() {
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents();
    }
};

TEST(LogView, SettlesWithAnyPartOfItsWidestLineVisible) {
    CountedLines lines(60, "short");
    lines.lines[12] = std::string(100, 'W');
    ShownList list(lines);
    const int row = list.view->lineRect(1).height();
    for (const bool atEnd : {false, true})
        for (int height = 13 * row; height < 19 * row; ++height) {
            QScrollBar& bar = *list.view->verticalScrollBar();
            list.window.resize(200, height);
            ShownList::turn();
            bar.setValue(atEnd ? std::min(12, bar.maximum()) : 0);
            ShownList::turn();
            const int paints = list.view->paints();
            ShownList::turn();
            EXPECT_EQ(list.view->paints(), paints) << "height " << height << ", " << atEnd;
        }
    EXPECT_GT(list.view->horizontalScrollBar()->maximum(), 0);
    // Without the line there is nothing to scroll to.
    lines.lines.erase(lines.lines.begin() + 12);
    list.view->showLines(lines, 59, -1);
    EXPECT_EQ(list.view->horizontalScrollBar()->maximum(), 0);
}

TEST(LogView, MakesOnlyTheVisibleLines) {
    const CountedLines lines(10'000, "Wake");
    ShownList list(lines);
    const int inSight = list.view->visibleCount();
    ASSERT_LT(inSight, 100);
    lines.made = 0;
    constexpr int steps = 100;
    for (int i = 0; i < steps; ++i) {
        list.view->showLines(lines, 10'000, i % 2 == 0 ? 9'999 : 0);
        QApplication::processEvents();
    }
    EXPECT_LE(lines.made, 4 * steps * inSight);
}

TEST(LogView, ShowsByItsSelectionWhetherItHasTheFocus) {
    const CountedLines lines(5, "Wake");
    ShownList list(lines);
    list.view->showLines(lines, 5, 2);
    const QPoint place = list.view->lineRect(2).center();
    const auto color = [&] {
        ShownList::turn();
        return list.window.grab().toImage().pixelColor(
            list.view->viewport()->mapTo(&list.window, QPoint(place.x(), place.y())));
    };
    const auto repainted = [&](QWidget& focused) {
        const int before = list.view->paints();
        focused.setFocus();
        ShownList::turn();
        return list.view->paints() > before;
    };
    EXPECT_TRUE(repainted(*list.view));
    EXPECT_EQ(color(), QApplication::palette().color(QPalette::Highlight));
    EXPECT_TRUE(repainted(*list.field));
    EXPECT_EQ(color(), QApplication::palette().color(QPalette::AlternateBase));
}

TEST(LogView, ShowsALineThatDoesNotFitInATooltip) {
    CountedLines lines(2, "short");
    lines.lines[1] = "more & " + std::string(100, 'W');
    ShownList list(lines);
    const auto tooltipOf = [&](int line) {
        const QPoint place = list.view->lineRect(line).center();
        QHelpEvent event(QEvent::ToolTip, place, list.view->viewport()->mapToGlobal(place));
        QApplication::sendEvent(list.view->viewport(), &event);
        return QToolTip::text();
    };
    EXPECT_TRUE(tooltipOf(1).contains("more &amp; WW"));
    QToolTip::hideText();
    ShownList::turn();
    EXPECT_FALSE(tooltipOf(0).contains("short"));
}

} // namespace
} // namespace bitlux::test
