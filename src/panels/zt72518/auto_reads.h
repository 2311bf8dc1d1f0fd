#pragma once

#include "panels/common/panel_part.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/command_store.h"
#include "platform/event.h"
#include "platform/forms/control_array.h"
#include "platform/forms/timer.h"

#include <string>
#include <vector>

namespace bitlux::zt72518 {

/// Reads the registers whose boxes are ticked twice a second, as their read buttons do. Among the
/// boxes are also those that switch all of it, those that tick a group, and those that record what
/// is sent.
class AutoReads : public PanelPart {
public:
    explicit AutoReads(const PanelContext& context);

    void timer_auto_Timer();

private:
    /// What a box reads: a button of the pages.
    struct Read {
        int box;
        ControlRef button;
        std::string title;
    };

    /// In the order in which they are read.
    static std::vector<Read> readsOf(const chips::Chip& chip);
    [[nodiscard]] std::string captionOf(int box) const;
    void read_auto_Click(int box);
    void switchAll(int box);
    void tick(int first, int last, bool on);
    void tickGroup(int box);
    void record(bool on);
    void showRecording();
    void switchOff();
    /// After this nothing reads by itself any more.
    void giveUp();

    std::vector<Read> reads_;
    const PanelControls& controls_;
    const ChipWords& words_;
    CommandStore& store_;
    Subscription linkFailed_;
    bool adjusting_ = false; ///< boxes change by themselves

public:
    forms::ControlArray<forms::CheckBox> read_auto;
    forms::Timer timer_auto;
};

} // namespace bitlux::zt72518
