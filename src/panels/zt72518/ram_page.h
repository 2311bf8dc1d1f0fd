#pragma once

#include "panels/common/key_filters.h"
#include "panels/common/panel_part.h"

namespace bitlux::zt72518 {

/// What the page of the four RAM bytes has in addition to a register's page: the byte of the write
/// row as hexadecimal text, and reading all four. It also provides the key filters.
class RamPage : public PanelPart {
public:
    explicit RamPage(const PanelContext& context);

    void load() override;

private:
    void showHex();
    int filterKey(int key);
    void followText();
    void confirmText();

    PanelControls& controls_;
    KeyFilters filters_;
    MessageBoxes& boxes_;

public:
    forms::TextBox Val_Hex_RAM; ///< at most two capital digits
};

} // namespace bitlux::zt72518
