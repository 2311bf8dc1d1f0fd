#pragma once

#include "gui/binder.h"
#include "panels/common/sequence_player.h"
#include "sending/multiple_run.h"

#include <functional>
#include <optional>

#include <QProgressBar>
#include <QTimer>

namespace bitlux::gui {

/// What is told of a run.
struct ShownRun {
    int line = 0; ///< from 1
    int lines = 0;
    bool countsDown = false; ///< the text changes by itself
    std::string text;
};

/// Where a run is: line, and what is left of a wait. Hidden while none is on.
class RunProgressView : public QProgressBar {
public:
    /// Nothing while no run is on.
    using Look = std::function<std::optional<ShownRun>()>;

    RunProgressView(Look look, Binder& binder, QWidget* parent);

    /// What was looked at goes.
    void leave();

private:
    static constexpr int countdown = 100; ///< milliseconds between two looks at a wait

    void follow();

    Look look_;
    QTimer timer_;
    Subscription flushed_;
};

/// A run over the commands to send.
[[nodiscard]] std::optional<ShownRun> shownRun(const MultipleRun& run, const RunControls& controls);
/// A run over the sequence of a panel.
[[nodiscard]] std::optional<ShownRun> shownRun(const SequencePlayer& run);

} // namespace bitlux::gui
