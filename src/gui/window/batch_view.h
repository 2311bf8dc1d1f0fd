#pragma once

#include "gui/widgets/binder.h"
#include "gui/window/run_row.h"
#include "program/program.h"

#include <QWidget>

namespace bitlux::gui {

/// The page of Batches: the Quick Commands on the left, the commands to send on the right, between
/// them the controls that fill and order these, and below the saved Batches and the Session Log.
class BatchView : public QWidget {
public:
    BatchView(Program& program, Binder& binder, QWidget* parent);

    /// The place of the run buttons on this page.
    [[nodiscard]] const RunRow::Place& runPlace() const { return runPlace_; }

private:
    QWidget* makeLists();
    LogView* makeList(forms::ListBox& control, const QString& title, QWidget* parent);
    QWidget* makeButtons(QWidget* parent);
    QWidget* makeBatchRow();

    Program& program_;
    MainForm& form_;
    Binder& binder_;
    LogView* toSend_ = nullptr;
    RunRow::Place runPlace_;
    Subscription flushed_;
};

} // namespace bitlux::gui
