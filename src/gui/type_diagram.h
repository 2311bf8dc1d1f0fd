#pragma once
#include <QWidget>
namespace bitlux::gui {
class TypeDiagram : public QWidget {
public:
    TypeDiagram(int, QWidget* parent) : QWidget(parent) { setMinimumSize(420, 180); }
};
} // namespace bitlux::gui
