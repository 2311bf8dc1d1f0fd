#pragma once

#include "panels/common/panel_part.h"

#include <cstdint>

namespace bitlux::zt72516 {

/// The buttons that change the mode of the chip: its random code is read, and written back inverted
/// beside what is selected.
class ModeChanges : public PanelPart {
public:
    explicit ModeChanges(const PanelContext& context);

private:
    void select(std::uint64_t mode);

    PanelControls& controls_;
    const LabelRow& row_; ///< of SPE_MODE
};

} // namespace bitlux::zt72516
