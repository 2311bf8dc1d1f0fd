#pragma once

#include "gui/widgets/binder.h"
#include "sending/run_controls.h"

#include <array>

#include <QPushButton>
#include <QWidget>

namespace bitlux::gui {

/// The five run buttons. The pages share them; they are on the visible page.
class RunRow : public QWidget {
public:
    RunRow(RunControls& run, Binder& binder, QWidget* parent);

    /// Its place on a page.
    struct Place {
        QWidget* room = nullptr;
        QWidget* before = nullptr; ///< the last control before it in the tab order
    };
    void moveTo(const Place& place);

private:
    std::array<QPushButton*, 5> buttons_{};
};

} // namespace bitlux::gui
