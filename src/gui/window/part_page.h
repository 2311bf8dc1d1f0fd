#pragma once

#include "gui/widgets/binder.h"
#include "gui/window/run_row.h"
#include "program/main_tabs.h"

#include <QVBoxLayout>
#include <QWidget>

namespace bitlux::gui {

/// A page of a part: what it is for, and the button that opens the part's panel, if there is one.
class PartPage : public QWidget {
public:
    static constexpr int pspiPage = 3; ///< of the ZT72517
    static constexpr int chipPage = 8; ///< FrameChip, which all chips of users share

    /// `page` is the index of the page in FrameMain, 3 to 7, or chipPage; `before` precedes it in
    /// the tab order.
    PartPage(MainTabs& tabs, int page, QWidget& before, Binder& binder, QWidget* parent);

    /// Adds the content of the page; the tab order continues from `last`.
    void add(QWidget& content, QWidget& last);

    [[nodiscard]] const RunRow::Place& runPlace() const { return runPlace_; }

private:
    QVBoxLayout* layout_;
    RunRow::Place runPlace_;
};

} // namespace bitlux::gui
