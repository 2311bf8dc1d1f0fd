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

/// What is shown of a run.
struct ShownRun {
    int line = 0;    ///< from 1
    int lines = 0;   ///< 0 where there is no list
    int changes = 0; ///< milliseconds after which the text may differ; 0 for never
    std::string text;
};

/// The position of a run: line, remaining wait, number of words of a continuous run. Hidden while
/// there is no run.
class RunProgressView : public QProgressBar {
public:
    /// Nothing while there is no run.
    using Look = std::function<std::optional<ShownRun>()>;

    RunProgressView(Look look, Binder& binder, QWidget* parent);

    /// The object that is looked at is destroyed.
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
