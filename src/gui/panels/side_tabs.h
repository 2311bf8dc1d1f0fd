#pragma once

#include <QTabBar>

namespace bitlux::gui {

/// Tabs below each other, with horizontal texts.
class SideTabs : public QTabBar {
public:
    explicit SideTabs(QWidget* parent);

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // The number of tabs already measured, and the widest text of these.
    mutable int measured_ = 0;
    mutable int widest_ = 0;
};

} // namespace bitlux::gui
