#pragma once

#include "gui/binder.h"
#include "sending/run_controls.h"

#include <array>

#include <QWidget>

namespace bitlux::gui {

/// The four run buttons. They are shared by the pages and stand on the one that is shown.
class RunRow : public QWidget {
public:
    RunRow(RunControls& run, Binder& binder, QWidget* parent);

    /// Moves into `place`, also in the order of the tabulator key.
    void moveTo(QWidget& place);

private:
    std::array<QWidget*, 4> buttons_{};
};

} // namespace bitlux::gui
