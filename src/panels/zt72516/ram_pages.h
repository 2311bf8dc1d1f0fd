#pragma once

#include "panels/common/panel_part.h"
#include "panels/zt72516/word_builder.h"

namespace bitlux::zt72516 {

/// What the pages of the two RAM words have beside a register's page: the bits that are written, as
/// hexadecimal text, and a button that takes them from there.
class RamPages : public PanelPart {
public:
    explicit RamPages(const PanelContext& context);

private:
    void add(const PanelContext& context, const char* row, forms::TextBox& box,
             const char* setBits);
    int filterKey(forms::TextBox& box, int key);

    WordBuilder& builder_;

public:
    forms::TextBox HexRAM_A; ///< six capital digits at most where they are typed
    forms::TextBox HexRAM_B;
};

} // namespace bitlux::zt72516
