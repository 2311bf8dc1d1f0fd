#include "panels/zt72518/panel_form.h"

namespace bitlux::zt72518 {

PanelForm::PanelForm(forms::FormSet& set, const Parts& parts)
    : Form(set, "ZT72518", "ZT72518"),
      link(*this, parts.session, parts.engine, variables_) {
    procedure("Send_SPI", [this] { link.Send_SPI(); });
    procedure("ReadLowWord", [this](std::uint8_t high) { link.ReadLowWord(high); });
    procedure("ReadHighWord", [this](std::uint8_t high) { link.ReadHighWord(high); });
    procedure("Update_Miso_Write", [this] { link.Update_Miso_Write(); });
    procedure("Update_Miso_Read", [this] { link.Update_Miso_Read(); });
}

} // namespace bitlux::zt72518
