#pragma once

#include "panels/common/panel_part.h"

namespace bitlux {

/// A panel that goes while its sequence is in sight asks whether to save it. After No, what still
/// runs sends nothing more; after a save that fails, the panel stays.
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
