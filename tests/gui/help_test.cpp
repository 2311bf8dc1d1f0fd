#include "gui/help/help_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct HelpBench {
    gui::HelpWindow window;
    QTextBrowser& browser = *window.findChild<QTextBrowser*>();
    QListWidget& contents = *window.findChild<QListWidget*>();
    QLineEdit& search = *window.findChild<QLineEdit*>();

    HelpBench() {
        window.bringToFront();
        QApplication::processEvents();
    }
    QString heading() { return browser.document()->firstBlock().text(); }
};

TEST(Help, HasAPageForEveryTitleAndNoDeadLink) {
    HelpBench bench;
    for (int page = 0; page < bench.contents.count(); ++page) {
        bench.contents.setCurrentRow(page);
        EXPECT_EQ(bench.heading(), bench.contents.item(page)->text());
        EXPECT_GT(bench.browser.toPlainText().size(), 400) << page;
        const QRegularExpression link("href=\"([^\"]*)\"");
        for (const auto& match : link.globalMatch(bench.browser.toHtml())) {
            const QUrl target = bench.browser.source().resolved(QUrl(match.captured(1)));
            EXPECT_TRUE(bench.browser.loadResource(QTextDocument::HtmlResource, target).isValid())
                << target.toString().toStdString();
        }
    }
}

TEST(Help, IsSearchedThroughAllPages) {
    HelpBench bench;
    QTest::keyClick(&bench.window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(bench.search.hasFocus());
    QTest::keyClicks(&bench.search, "lsusb");
    QTest::keyClick(&bench.search, Qt::Key_Return);
    EXPECT_EQ(bench.browser.textCursor().selectedText().toLower(), "lsusb");
    const QString found = bench.heading();
    EXPECT_NE(found, bench.contents.item(0)->text());
    EXPECT_EQ(bench.contents.currentItem()->text(), found);
    QTest::keyClick(&bench.window, Qt::Key_Left, Qt::AltModifier);
    bench.search.setText("not in any page");
    QTest::keyClick(&bench.search, Qt::Key_Return, Qt::ShiftModifier);
    bool isShown = false;
    for (const QLabel* label : bench.window.findChildren<QLabel*>())
        isShown = isShown || label->text() == "Not found";
    EXPECT_TRUE(isShown);
    QTest::keyClick(&bench.search, Qt::Key_Escape);
    EXPECT_FALSE(bench.window.isVisible());
}

} // namespace
} // namespace bitlux::test
