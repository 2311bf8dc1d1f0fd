#include "gui/desktop/accessibility.h"
#include "gui/desktop/theme.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    bitlux::gui::applyTheme(false);
    bitlux::gui::installAccessibility();
    return RUN_ALL_TESTS();
}
