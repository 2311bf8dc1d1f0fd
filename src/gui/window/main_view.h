#pragma once

#include "gui/widgets/binder.h"
#include "gui/window/part_page.h"
#include "gui/window/run_row.h"
#include "program/program.h"

#include <array>

#include <QWidget>

class QVBoxLayout;

namespace bitlux::gui {

class SingleWordView;

/// The main form: its title, the tabs and their pages. A page is made when it is first shown. The
/// view decides nothing; the form determines what is visible and enabled.
class MainView : public QWidget {
public:
    MainView(Program& program, Binder& binder, QWidget* parent = nullptr);

    /// The widget in which a user begins to type.
    void focusEntry();
    /// Where words are typed on the visible page, selects the current one, so that the next
    /// replaces it.
    void enterNextWord();

protected:
    bool focusNextPrevChild(bool next) override;

private:
    [[nodiscard]] bool focusIsHidden() const;
    static constexpr int pageCount = PartPage::chipPage;

    [[nodiscard]] forms::Frame& frameOf(int page) const;

    QWidget* makeHeader();
    void leaveOutUnusedControls();
    void follow();
    RunRow::Place makePage(int page); ///< returns the place of the run buttons on it

    Program& program_;
    MainForm& form_;
    Binder& binder_;
    QTabBar* tabs_ = nullptr;
    SingleWordView* singleWord_ = nullptr; ///< once it is made
    RunRow* runRow_ = nullptr;
    QVBoxLayout* pages_ = nullptr;
    /// The place of the run buttons on each page; empty before the page is made.
    std::array<RunRow::Place, pageCount> runPlaces_{};
    Subscription flushed_;
};

} // namespace bitlux::gui
