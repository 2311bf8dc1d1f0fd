#pragma once

#include "gui/widgets/binder.h"
#include "gui/window/run_row.h"
#include "gui/window/word_entry.h"
#include "program/program.h"

#include <array>
#include <vector>

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace bitlux::gui {

/// The page of single words: the word as bits or digits, the Quick Commands, the Session Log.
class SingleWordView : public QWidget {
public:
    /// `before` precedes the page in the tab order.
    SingleWordView(Program& program, Binder& binder, QWidget& before, QWidget* parent);

    /// The place of the run buttons on this page.
    [[nodiscard]] const RunRow::Place& runPlace() const { return runPlace_; }

    /// Selects the word, so that the next one typed replaces it. Does nothing where words are
    /// entered as bits.
    void enterNextWord();

private:
    QWidget* makeBitRows();
    QWidget* makeBitRow(QGroupBox* frame, QLabel* title, bool toSend);
    void makeMissingGroups();
    QWidget* makeGroup(int group, bool toSend);
    QWidget* makeHexRows();
    QWidget* makeCommandRow(Program& program);
    /// Puts the entries, from the left, before the buttons in the tab order.
    void orderTabs();
    [[nodiscard]] bool isShown(std::size_t group) const;
    void noteWord();
    void follow();

    MainForm& form_;
    Binder& binder_;
    QWidget& before_;
    std::vector<std::array<QWidget*, 2>> groups_; ///< of eight bits, to send and received
    std::array<QHBoxLayout*, 2> bitRows_{};
    QVBoxLayout* entries_ = nullptr;
    std::array<QWidget*, SingleWordPage::bitColumns> bitButtons_{};
    WordEntry* hexEntry_ = nullptr;
    std::vector<DigitsLabel*> answers_;
    QWidget* bits_ = nullptr;
    QWidget* hexRows_ = nullptr;
    RunRow::Place runPlace_;
    std::array<Subscription, 3> subscriptions_;
    bool answered_ = false; ///< a word came back since the last refresh
};

} // namespace bitlux::gui
