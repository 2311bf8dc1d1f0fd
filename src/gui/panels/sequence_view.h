#pragma once

#include "gui/panels/panel_extras.h"

#include <vector>

#include <QWidget>

class QGridLayout;

namespace bitlux::gui {

class RunProgressView;

/// The page of the sequence: line numbers, commands, values and answers beside each other, which
/// scroll together, and beside them the controls that edit and run the lines. The line that runs is
/// highlighted in all lists and stays visible.
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
    qint64 runTheme_ = 0; ///< palette in which the run is shown, 0 while there is no run
    Subscription flushed_;
    Subscription progressed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
