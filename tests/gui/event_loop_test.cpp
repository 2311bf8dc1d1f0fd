#include "gui/desktop/qt_desk.h"

#include <QAbstractEventDispatcher>
#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(QtEventLoop, SleepsUntilAnEvent) {
    gui::QtEventLoop loop;
    int sleeps = 0;
    QObject context;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     &context, [&sleeps] { ++sleeps; });
    bool delivered = false;
    QTimer::singleShot(1, [&delivered] { delivered = true; });
    while (!delivered) // or it would stay here for an hour
        loop.waitForEvents(3'600'000'000'000);
    EXPECT_LE(sleeps, 10) << "it does not poll";
}

} // namespace
} // namespace bitlux::test
