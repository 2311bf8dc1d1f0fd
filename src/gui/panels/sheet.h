#pragma once

#include <QScrollArea>

namespace bitlux::gui {

/// A part of a page that scrolls when it does not fit. Moving the focus into it scrolls to the
/// widget with the focus.
class Sheet : public QScrollArea {
public:
    explicit Sheet(QWidget* parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidget(new QWidget(this));
    }
};

} // namespace bitlux::gui
