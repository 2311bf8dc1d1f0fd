#pragma once

#include "gui/panels/panel_widgets.h"

#include <vector>

#include <QWidget>

namespace bitlux::gui {

/// The picture of the chip's modes: a button for each mode, an arrow for each transition; those
/// that are possible from the present mode are white.
class ModePicture : public QWidget {
public:
    ModePicture(const PanelWidgets& widgets, QWidget* parent);
    ~ModePicture() override;

    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    class Transition;

    void place();
    /// Assistive tools are notified of an arrow while it is visible.
    void nameTransitions();

    std::vector<QWidget*> modes_; ///< in the order of their positions
    std::vector<Transition*> transitions_;
};

/// The page of the picture, with the boxes that determine what its buttons send.
class ModeDiagram : public QWidget {
public:
    ModeDiagram(const PanelWidgets& widgets, QWidget* parent);

private:
    QWidget* makeReading();
    QWidget* makeBoxes(const QString& title, int button);

    PanelWidgets widgets_;
};

} // namespace bitlux::gui
