#pragma once

#include "gui/widgets/binder.h"
#include "program/program.h"

#include <QWidget>

class QBoxLayout;
class QGridLayout;

namespace bitlux::gui {

class DecodedView;

/// The lower part of a generic page: two tabs, the Session Log and the extra pins. The page of the
/// pins is made when it is first shown, as is the decoded log in place of the list.
class LogPinsView : public QWidget {
public:
    /// The single-word page sets pins at once, the Batch page as commands to send.
    enum class Page { SingleWord, Batch };

    LogPinsView(Program& program, Binder& binder, Page page, QWidget* parent);

private:
    void fillLog(QWidget& page);
    void addDecoded(QBoxLayout& row, QBoxLayout& buttons, QWidget& lines);
    DecodedView* makeDecoded(QWidget& page, QWidget& lines);
    void makeShownPins();
    void addRow(QGridLayout& grid, int row);
    void follow();

    [[nodiscard]] bool single() const { return page_ == Page::SingleWord; }
    [[nodiscard]] forms::Frame& frame(int tab) const;

    Program& program_;
    MainForm& form_;
    Binder& binder_;
    Page page_;
    QWidget* pins_;
    QWidget* hint_ = nullptr; ///< says where pins are enabled; visible while none is
    Subscription flushed_;
};

} // namespace bitlux::gui
