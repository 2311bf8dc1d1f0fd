#pragma once

#include "gui/binder.h"
#include "panels/zt72518/sequencer.h"

#include <array>

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

class RunProgressView;

/// The page of the sequence: line numbers, commands, values and answers side by side, which scroll
/// together, and beside them what works on the lines and runs them. The line that runs stands out
/// in all of them and stays in sight.
class SequenceView : public QWidget {
public:
    SequenceView(zt72518::Sequencer& sequencer, Binder& binder, QWidget* parent);

private:
    struct Condition;

    QWidget* makeLists();
    LogView* makeList(forms::ListBox& control, const QString& name, QWidget* parent);
    void scrollTogether();
    QWidget* makeTools();
    QWidget* makeRun(QWidget* parent);
    void addLoop(QGridLayout& grid, QWidget* parent);
    QWidget* makeLines(QWidget* parent);
    QWidget* makeValue(QWidget* parent);
    QWidget* makeConditions(QWidget* parent);
    QWidget* makeCondition(const Condition& condition, QWidget* parent);
    QLineEdit* makeNumber(forms::TextBox& control, const QString& prompt, const QString& name,
                          QWidget* parent);
    void follow();
    void showRun(bool runs);

    zt72518::Sequencer& sequencer_;
    Binder& binder_;
    std::array<LogView*, 5> lists_{};
    QPushButton* runButton_ = nullptr;
    RunProgressView* progress_ = nullptr;
    bool scrolling_ = false;
    qint64 runTheme_ = 0; ///< palette of the program in which the run is shown, 0 while none is
    Subscription flushed_;
    Subscription progressed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
