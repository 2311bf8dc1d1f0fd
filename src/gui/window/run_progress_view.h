#pragma once

#include "gui/widgets/binder.h"
#include "panels/common/sequence_player.h"
#include "sending/continuous_count.h"
#include "sending/multiple_run.h"

#include <functional>
#include <optional>

#include <QProgressBar>
#include <QTimer>

namespace bitlux::gui {

/// What is told of a run.
struct ShownRun {
    int line = 0;    ///< from 1
    int lines = 0;   ///< 0 where there is no list
    int changes = 0; ///< milliseconds after which the text may be another by itself; 0 for never
    std::string text;
};

/// Where a run is: line, what is left of a wait, how many words in a continuous run. Hidden while
/// none is on.
class RunProgressView : public QProgressBar {
public:
    /// Nothing while no run is on.
    using Look = std::function<std::optional<ShownRun>()>;

    RunProgressView(Look look, Binder& binder, QWidget* parent);

    /// What was looked at goes.
    void leave();

private:
    void follow();

    Look look_;
    QTimer timer_;
    Subscription flushed_;
};

/// A run over the commands to send, or a continuous run of the one word.
[[nodiscard]] std::optional<ShownRun> shownRun(const MultipleRun& run, const RunControls& controls,
                                               ContinuousCount& count);
/// A run over the sequence of a panel.
[[nodiscard]] std::optional<ShownRun> shownRun(const SequencePlayer& run);

} // namespace bitlux::gui
