#include "gui/qt_desk.h"

#include <ctime>

#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr std::int64_t millisecond = 1'000'000;

TEST(QtEventLoop, SleepsUntilTheDeadline) {
    gui::QtEventLoop loop;
    const SystemClock clock;
    constexpr std::int64_t wait = 120 * millisecond;
    const std::int64_t start = clock.nanoseconds();
    const std::clock_t busyBefore = std::clock();
    for (std::int64_t left = wait; left > 0; left = start + wait - clock.nanoseconds())
        loop.waitForEvents(left);
    const auto busy = static_cast<double>(std::clock() - busyBefore) / CLOCKS_PER_SEC;
    const std::int64_t late = clock.nanoseconds() - start - wait;
    EXPECT_GE(late, 0);
    EXPECT_LT(late, 50 * millisecond); // a busy machine; else far below one
    EXPECT_LT(busy, 0.04);
}

TEST(QtEventLoop, WakesForAnEvent) {
    gui::QtEventLoop loop;
    const SystemClock clock;
    bool delivered = false;
    QTimer::singleShot(10, [&delivered] { delivered = true; });
    const std::int64_t start = clock.nanoseconds();
    while (!delivered)
        loop.waitForEvents(3'600'000 * millisecond);
    EXPECT_LT(clock.nanoseconds() - start, 1000 * millisecond);
}

} // namespace
} // namespace bitlux::test
