#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;

namespace bitlux::gui {

/// The help: pages beside a table of contents, with a search over all of them.
class HelpWindow : public QWidget {
public:
    HelpWindow();

    /// Like `show`, and in front of the other windows.
    void bringToFront();

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QHBoxLayout* makeBar();
    QListWidget* makeContents();
    void setColors();
    void show(int page);
    /// Searches from the last match on, through the other pages and back to here.
    void find(bool forwards);
    bool findOnPage(bool forwards);

    QTextBrowser* browser_;
    QListWidget* contents_;
    QLineEdit* search_ = nullptr;
    QLabel* outcome_ = nullptr;
};

} // namespace bitlux::gui
