#pragma once

#include "gui/binder.h"
#include "gui/run_row.h"
#include "program/main_tabs.h"

#include <QWidget>

namespace bitlux::gui {

/// A page of a part: what it is for, and the button that opens the part's panel where there is one.
class PartPage : public QWidget {
public:
    static constexpr int chipPage = 8; ///< FrameChip, which all chips of users share

    /// `page` is the index of the page in FrameMain, 3 to 7, or chipPage; `before` is the control
    /// that the tabulator key reaches before it.
    PartPage(MainTabs& tabs, int page, QWidget& before, Binder& binder, QWidget* parent);

    [[nodiscard]] const RunRow::Place& runPlace() const { return runPlace_; }

private:
    RunRow::Place runPlace_;
};

} // namespace bitlux::gui
