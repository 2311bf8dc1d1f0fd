#pragma once

#include "gui/widgets/elided_label.h"
#include "program/status_notices.h"

#include <functional>

#include <QPushButton>
#include <QWidget>

namespace bitlux::gui {

/// A notice in the status line: its sentence, and its button where it has one. Hidden while there
/// is none.
class NoticeView : public QWidget {
public:
    /// `pressed` is told after the button has done its work.
    NoticeView(StatusNotices& notices, std::function<void()> pressed, QWidget* parent);

    /// Brings it up to date.
    void follow();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    StatusNotices& notices_;
    std::function<void()> pressed_;
    ElidedLabel* text_;
    QPushButton* button_;
};

} // namespace bitlux::gui
