#pragma once

#include "gui/binder.h"
#include "program/program.h"

#include <array>
#include <vector>

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace bitlux::gui {

/// The pages of frmMain: its controls, laid out. It decides nothing; what is visible and enabled
/// is the form's affair.
class MainView : public QWidget {
public:
    MainView(Program& program, Binder& binder, QWidget* parent = nullptr);

    /// Where a user begins to type.
    void focusEntry();

private:
    QWidget* makeHeader();
    QWidget* makeBitRows();
    QWidget* makeHexRows();
    QWidget* makeRunRow();
    void leaveOutWaitingControls();
    void makeMissingGroups();
    /// Lets the tabulator key go through the entries, from the left, before the buttons.
    void orderTabs();
    [[nodiscard]] bool isShown(std::size_t group) const;
    QWidget* makeBitRow(QGroupBox* frame, QLabel* title, bool toSend);
    QWidget* makeGroup(int group, bool toSend);
    void follow();

    /// A bound widget of a control.
    template <typename Widget, typename Control>
    Widget* bound(Control& control, QWidget* parent = nullptr);

    Program& program_;
    MainForm& form_;
    Binder& binder_;
    std::vector<std::array<QWidget*, 2>> groups_; ///< of eight bits, to send and received
    std::array<QHBoxLayout*, 2> bitRows_{};
    QVBoxLayout* entries_ = nullptr;
    std::array<QWidget*, SingleWordPage::bitColumns> bitButtons_{};
    QWidget* hexEntry_ = nullptr;
    std::vector<DigitsLabel*> answers_;
    QWidget* bits_ = nullptr;
    QWidget* hexRows_ = nullptr;
    std::array<Subscription, 2> subscriptions_;
    bool answered_ = false; ///< a word came back since the last refresh
};

} // namespace bitlux::gui
