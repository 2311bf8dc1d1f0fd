#include "gui/run_progress_view.h"

#include <fmt/format.h>

namespace bitlux::gui {

namespace {

std::string durationText(std::int64_t nanoseconds) {
    const std::int64_t tenths = (nanoseconds + 99'999'999) / 100'000'000;
    const std::int64_t seconds = tenths / 10;
    if (seconds < 60)
        return fmt::format("{}.{} s", seconds, tenths % 10);
    if (seconds < 3600)
        return fmt::format("{}:{:02} min", seconds / 60, seconds % 60);
    return fmt::format("{}:{:02}:{:02} h", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

} // namespace

RunProgressView::RunProgressView(const MultipleRun& run, const RunControls& controls,
                                 Binder& binder, QWidget* parent)
    : QProgressBar(parent), run_(run), controls_(controls) {
    setObjectName("runProgress");
    setAccessibleName("Progress of the run");
    setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    setAlignment(Qt::AlignCenter);
    timer_.setInterval(countdown);
    connect(&timer_, &QTimer::timeout, this, [this] { follow(); });
    flushed_ = binder.flushed.follow([this] { follow(); });
    follow();
}

void RunProgressView::follow() {
    const std::optional<RunProgress>& progress = run_.progress();
    setVisible(progress.has_value());
    const bool waits = progress && progress->waitUntil;
    if (!waits)
        timer_.stop();
    else if (!timer_.isActive())
        timer_.start();
    if (!progress)
        return;
    setRange(0, static_cast<int>(progress->lines));
    setValue(static_cast<int>(progress->line) + 1);
    setFormat(describe(*progress));
}

QString RunProgressView::describe(const RunProgress& progress) const {
    std::string text = fmt::format("line {} of {}", progress.line + 1, progress.lines);
    if (controls_.continuous())
        text = fmt::format("Pass {}, ", progress.pass) + text;
    else
        text[0] = 'L';
    if (progress.waitUntil)
        text += fmt::format(", {} to wait", durationText(run_.remainingWait()));
    return QString::fromStdString(text);
}

} // namespace bitlux::gui
