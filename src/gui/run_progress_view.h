#pragma once

#include "gui/binder.h"
#include "sending/multiple_run.h"

#include <QProgressBar>
#include <QTimer>

namespace bitlux::gui {

/// Where a run over the commands to send is: pass, line and what is left of a wait. Hidden while
/// none is on.
class RunProgressView : public QProgressBar {
public:
    RunProgressView(const MultipleRun& run, const RunControls& controls, Binder& binder,
                    QWidget* parent);

private:
    static constexpr int countdown = 100; ///< milliseconds between two looks at a wait

    void follow();
    [[nodiscard]] QString describe(const RunProgress& progress) const;

    const MultipleRun& run_;
    const RunControls& controls_;
    QTimer timer_;
    Subscription flushed_;
};

} // namespace bitlux::gui
