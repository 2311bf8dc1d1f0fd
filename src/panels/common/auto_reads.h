#pragma once

#include "panels/common/panel_part.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/timer.h"

#include <string>
#include <vector>

namespace bitlux {

class CommandStore;

/// Presses the read buttons whose boxes are ticked, again and again. Among the boxes are also those
/// that switch all of it, those that tick a group, and those that record what is sent by hand.
class AutoReads : public PanelPart {
public:
    explicit AutoReads(const PanelContext& context);

    [[nodiscard]] const chips::AutomaticReads& style() const { return style_; }
    /// Boxes of the reads that stand with a group: up to the highest that it ticks, behind those of
    /// the groups before; the last group has all that are left. Without groups, all of them.
    [[nodiscard]] std::vector<int> boxesOf(std::size_t group) const;

private:
    [[nodiscard]] std::string captionOf(const chips::Chip& chip, int box) const;
    void addProcedures(forms::Form& form);
    void clicked(int box);
    void switchAll(int box);
    void tick(const chips::BitList& list, bool on);
    void tickGroup(const chips::AutomaticReads::Group& group);
    void record(bool on);
    void showRecording();
    void readAll();
    void switchOff();
    /// After this nothing reads by itself any more.
    void giveUp();

    const chips::AutomaticReads& style_;
    const PanelControls& controls_;
    const Session& session_;
    CommandStore* const store_; ///< null where nothing records
    Subscription linkFailed_;
    bool adjusting_ = false; ///< boxes change by themselves

public:
    forms::ControlArray<forms::CheckBox> boxes;
    forms::Timer timer;
};

} // namespace bitlux
