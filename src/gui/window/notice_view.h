#pragma once

#include "gui/widgets/elided_label.h"
#include "program/status_notices.h"

#include <functional>

#include <QPushButton>
#include <QWidget>

namespace bitlux::gui {

/// A notice in the status line: its sentence, and its button if it has one. Hidden while there is
/// none.
class NoticeView : public QWidget {
public:
    /// `pressed` is called after the button's procedure.
    NoticeView(StatusNotices& notices, std::function<void()> pressed, QWidget* parent);

    /// Shows the current notice.
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
