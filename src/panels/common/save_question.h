#pragma once

#include "panels/common/panel_part.h"

namespace bitlux {

/// A panel that is closed while its sequence is visible asks whether to save it. After No, a run
/// sends nothing more; after a failed save, the panel stays open.
class SaveQuestion : public PanelPart {
public:
    explicit SaveQuestion(const PanelContext& context)
        : form_(context.form),
          pages_(context.chip.panel.pages),
          tabs_(context.outerTabs),
          boxes_(context.outside.desk.boxes),
          sequence_(context.sequence) {}

    void unload() override;

private:
    forms::Form& form_;
    const std::vector<chips::OuterPage>& pages_;
    const forms::TabStrip& tabs_;
    MessageBoxes& boxes_;
    PanelSequence& sequence_;
};

} // namespace bitlux
