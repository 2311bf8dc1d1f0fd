#pragma once

#include <QScrollArea>

namespace bitlux::gui {

/// A part of a page that scrolls where there is no room for it. The tabulator key goes through what
/// it holds, and brings it into sight.
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
