#include "panels/zt72518/panel_form.h"

namespace bitlux::zt72518 {

PanelForm::PanelForm(forms::FormSet& set, const Parts& parts)
    : Form(set, "ZT72518", "ZT72518"),
      link(*this, parts.session, parts.engine, variables_),
      Label_Liste("Label_Liste", 5, 6,
                  [this](const std::string& name, int index) {
                      return std::make_unique<forms::Label>(*this, name,
                                                            index == 5 ? "Start" : "Stop", index);
                  }),
      sequencer(*this, {.session = parts.session,
                        .variables = variables_,
                        .link = link,
                        .dongle = parts.dongle,
                        .startPick = Label_Liste(5),
                        .stopPick = Label_Liste(6),
                        .desk = parts.desk,
                        .clock = parts.clock}) {
    procedure("Send_SPI", [this] { link.Send_SPI(); });
    procedure("ReadLowWord", [this](std::uint8_t high) { link.ReadLowWord(high); });
    procedure("ReadHighWord", [this](std::uint8_t high) { link.ReadHighWord(high); });
    procedure("Update_Miso_Write", [this] { link.Update_Miso_Write(); });
    procedure("Update_Miso_Read", [this] { link.Update_Miso_Read(); });
}

} // namespace bitlux::zt72518
