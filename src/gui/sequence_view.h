#pragma once

#include "gui/binder.h"
#include "panels/zt72518/sequencer.h"

#include <array>

#include <QWidget>

class QVBoxLayout;

namespace bitlux::gui {

/// The page of the sequence: line numbers, commands, values and answers side by side, which scroll
/// together, and beside them what works on the lines and runs them.
class SequenceView : public QWidget {
public:
    SequenceView(zt72518::Sequencer& sequencer, Binder& binder, QWidget* parent);

private:
    QWidget* makeLists();
    LogView* makeList(forms::ListBox& control, const QString& name, QWidget* parent);
    void scrollTogether();
    QWidget* makeTools();
    QWidget* makeRun(QWidget* parent);
    QWidget* makeLines(QWidget* parent);
    QWidget* makeValue(QWidget* parent);
    QWidget* makeConditions(QWidget* parent);
    QLineEdit* makeNumber(forms::TextBox& control, const QString& name, QWidget* parent);

    zt72518::Sequencer& sequencer_;
    Binder& binder_;
    std::array<LogView*, 5> lists_{};
    bool scrolling_ = false;
};

} // namespace bitlux::gui
