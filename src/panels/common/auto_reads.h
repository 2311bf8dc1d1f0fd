#pragma once

#include "panels/common/panel_part.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/timer.h"

#include <string>
#include <vector>

namespace bitlux {

class CommandStore;

/// Repeatedly presses the read buttons whose boxes are ticked. Other boxes turn the reads on, tick
/// a group, or record what the user sends.
class AutoReads : public PanelPart {
public:
    explicit AutoReads(const PanelContext& context);

    [[nodiscard]] const chips::AutomaticReads& style() const { return style_; }
    /// Boxes of the reads that belong to a group: up to the highest that it ticks, after those of
    /// the previous groups; the last group has all remaining ones. Without groups, all of them.
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
    /// Stops all automatic reads.
    void giveUp();

    const chips::AutomaticReads& style_;
    const PanelControls& controls_;
    const Session& session_;
    CommandStore* const store_; ///< null without recording
    Subscription linkFailed_;
    bool adjusting_ = false; ///< boxes are being changed by code

public:
    forms::ControlArray<forms::CheckBox> boxes;
    forms::Timer timer;
};

} // namespace bitlux
