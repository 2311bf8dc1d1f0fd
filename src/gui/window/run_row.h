#pragma once

#include "gui/widgets/binder.h"
#include "sending/run_controls.h"

#include <array>

#include <QPushButton>
#include <QWidget>

namespace bitlux::gui {

/// The five run buttons. They are shared by the pages and stand on the one that is shown.
class RunRow : public QWidget {
public:
    RunRow(RunControls& run, Binder& binder, QWidget* parent);

    /// Where it stands on a page.
    struct Place {
        QWidget* room = nullptr;
        QWidget* before = nullptr; ///< the last control before it that the tabulator key reaches
    };
    void moveTo(const Place& place);

private:
    std::array<QPushButton*, 5> buttons_{};
};

} // namespace bitlux::gui
