#include "gui/desktop/qt_desk.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr std::int64_t millisecond = 1'000'000;

TEST(QtEventLoop, SleepsUntilTheDeadline) {
    gui::QtEventLoop loop;
    const SystemClock clock;
    constexpr std::int64_t wait = 120 * millisecond;
    const std::int64_t end = clock.nanoseconds() + wait;
    int waits = 0;
    for (std::int64_t left = wait; left > 0; left = end - clock.nanoseconds()) {
        waits += left > millisecond ? 1 : 0; // what is left below that is polled for
        loop.waitForEvents(left);
    }
    EXPECT_LE(waits, 10) << "it sleeps";
}

TEST(QtEventLoop, WakesForAnEvent) {
    gui::QtEventLoop loop;
    bool delivered = false;
    QTimer::singleShot(10, [&delivered] { delivered = true; });
    while (!delivered) // or it would stay here for an hour
        loop.waitForEvents(3'600'000 * millisecond);
}

} // namespace
} // namespace bitlux::test
