#pragma once

#include "gui/panels/panel_extras.h"

#include <vector>

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

class RunProgressView;

/// The page of the sequence: line numbers, commands, values and answers side by side, which scroll
/// together, and beside them what works on the lines and runs them. The line that runs stands out
/// in all of them and stays in sight.
class SequenceView : public QWidget {
public:
    SequenceView(PanelForm& form, const SequenceExtras& extras, const PanelWidgets& widgets,
                 QWidget* parent);

private:
    QWidget* makeLists(const chips::Chip& chip);
    LogView* makeList(forms::ListBox& control, const QString& name, QWidget* parent);
    void scrollTogether();
    QWidget* makeTools(const SequenceExtras& extras);
    QWidget* makeRun(QWidget* parent);
    void addLoop(QGridLayout& grid, QWidget* parent);
    QWidget* makeLines(QWidget* parent);
    void addTrigger(QGridLayout& grid, QWidget* parent);
    QWidget* makeEditor(QWidget* parent);
    void followForm();
    void follow();
    void showRun(bool runs);

    template <typename Control>
    [[nodiscard]] Control& named(const chips::ControlName& name) const {
        return dynamic_cast<Control&>(form_.control(chips::text(name)));
    }

    PanelForm& form_;
    const chips::SequenceStyle& style_;
    PanelSequence& sequence_;
    PanelWidgets widgets_;
    std::vector<LogView*> lists_;
    QPushButton* runButton_ = nullptr;
    RunProgressView* progress_ = nullptr;
    bool scrolling_ = false;
    qint64 runTheme_ = 0; ///< palette of the program in which the run is shown, 0 while none is
    Subscription flushed_;
    Subscription progressed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
