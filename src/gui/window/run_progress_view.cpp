#include "gui/window/run_progress_view.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux::gui {

namespace {

constexpr int countdown = 100; ///< milliseconds between two updates during a wait
constexpr int counting = 250;  ///< and of a count of words

std::string durationText(std::int64_t nanoseconds) {
    const std::int64_t tenths = (nanoseconds + 99'999'999) / 100'000'000;
    const std::int64_t seconds = tenths / 10;
    if (seconds < 60)
        return fmt::format("{}.{} s", seconds, tenths % 10);
    if (seconds < 3600)
        return fmt::format("{}:{:02} min", seconds / 60, seconds % 60);
    return fmt::format("{}:{:02}:{:02} h", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string waitText(std::int64_t left) {
    return fmt::format(", {} to wait", durationText(left));
}

const char* awaitedText(SequenceProgress::Awaited awaited) {
    switch (awaited) {
    case SequenceProgress::Awaited::Reset:
        return ", waits for a reset";
    case SequenceProgress::Awaited::Interrupt:
        return ", waits for an interrupt";
    default:
        return "";
    }
}

} // namespace

RunProgressView::RunProgressView(Look look, Binder& binder, QWidget* parent)
    : QProgressBar(parent), look_(std::move(look)) {
    setObjectName("runProgress");
    setAccessibleName("Progress of the run");
    setAlignment(Qt::AlignCenter);
    connect(&timer_, &QTimer::timeout, this, [this] { follow(); });
    flushed_ = binder.flushed.follow([this] { follow(); });
    follow();
}

void RunProgressView::leave() {
    flushed_.reset();
    timer_.stop();
}

void RunProgressView::follow() {
    const std::optional<ShownRun> run = look_();
    setVisible(run.has_value());
    const int changes = run ? run->changes : 0;
    if (changes == 0)
        timer_.stop();
    else if (!timer_.isActive() || timer_.interval() != changes)
        timer_.start(changes);
    if (!run)
        return;
    setRange(0, std::max(run->lines, 1)); // 0 would be a bar that moves without end
    setValue(run->line);
    setFormat(QString::fromStdString(run->text));
}

std::optional<ShownRun> shownRun(const MultipleRun& run, const RunControls& controls,
                                 ContinuousCount& count) {
    const std::optional<RunProgress>& progress = run.progress();
    const bool isContinuous = controls.continuous();
    if (!progress && isContinuous)
        return ShownRun{.changes = counting, .text = count.text()};
    if (!progress)
        return {};
    std::string text = fmt::format("line {} of {}", progress->line + 1, progress->lines);
    if (isContinuous)
        text = fmt::format("Pass {}, {}", progress->pass, text);
    else
        text[0] = 'L';
    if (progress->waitUntil)
        text += waitText(run.remainingWait());
    if (isContinuous)
        text += ", " + count.text();
    return ShownRun{.line = static_cast<int>(progress->line) + 1,
                    .lines = static_cast<int>(progress->lines),
                    .changes = progress->waitUntil ? countdown
                               : isContinuous      ? counting
                                                   : 0,
                    .text = std::move(text)};
}

std::optional<ShownRun> shownRun(const SequencePlayer& run) {
    const std::optional<SequenceProgress>& progress = run.progress();
    if (!progress)
        return {};
    return ShownRun{.line = progress->line,
                    .lines = progress->lines,
                    .changes = progress->waitUntil ? countdown : 0,
                    .text = fmt::format("Line {} of {}{}{}", progress->line, progress->lines,
                                        progress->waitUntil ? waitText(run.remainingWait()) : "",
                                        awaitedText(progress->awaited))};
}

} // namespace bitlux::gui
