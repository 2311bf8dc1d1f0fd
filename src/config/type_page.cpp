#include "config/type_page.h"

#include "transfer/clocking_type.h"

#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int types = 8;
constexpr int firstNonStandard = 5;

const char* nameOf(Edge edge) {
    return edge == Edge::Rising ? "rising" : "falling";
}

template <typename Text>
forms::ControlArray<forms::Label> notes(forms::Form& form, const std::string& name, Text text) {
    return {name, 1, types, [&](const std::string& arrayName, int type) {
                return std::make_unique<forms::Label>(form, arrayName, text(clockingType(type)),
                                                      type);
            }};
}

std::vector<forms::TabStrip::Tab> typeTabs() {
    std::vector<forms::TabStrip::Tab> tabs;
    for (int type = 1; type <= types; ++type)
        tabs.push_back({fmt::format("Type {}", type), "Click to change SPI type"});
    return tabs;
}

} // namespace

TypePage::TypePage(forms::Form& form, Session& session)
    : session_(session),
      frameSPItype(form, "frameSPItype", "SPI type"),
      TabStripSPItype(form, "TabStripSPItype", typeTabs()),
      frameSPIpicture("frameSPIpicture", 1, types,
                      [&form](const std::string& name, int type) {
                          return std::make_unique<forms::Frame>(form, name, "", type);
                      }),
      lblSPINoteRead(notes(form, "lblSPINoteRead",
                           [](const ClockingType& type) {
                               return fmt::format("DI and DO are valid on {} edge of CLK.",
                                                  nameOf(type.valid));
                           })),
      lblSPINoteToggle(notes(form, "lblSPINoteToggle",
                             [](const ClockingType& type) {
                                 return fmt::format("DI and DO are toggled on {} edge of CLK.",
                                                    nameOf(type.toggled));
                             })),
      lblSPINotePolarity(notes(form, "lblSPINotePolarity",
                               [](const ClockingType& type) {
                                   return fmt::format("CLK is {} before and after transfer.",
                                                      type.idle == ConstHigh ? "high" : "low");
                               })),
      lblNonStandard("lblNonStandard", firstNonStandard, types,
                     [&form](const std::string& name, int type) {
                         return std::make_unique<forms::Label>(form, name, "(Non-Standard)", type);
                     }) {
    for (int type = 2; type <= types; ++type)
        frameSPIpicture(type).hide();
    form.procedure("TabStripSPItype_Click", [this] { TabStripSPItype_Click(); });
}

void TypePage::TabStripSPItype_Click() {
    const int type = TabStripSPItype.selected();
    frameSPIpicture(session_.SPITypeTab).hide();
    frameSPIpicture(type).show();
    session_.SPITypeTab = static_cast<std::int16_t>(type);
}

void TypePage::select(const std::string& caption) {
    int chosen = 1;
    for (int type = 1; type <= types; ++type)
        if (TabStripSPItype.tabs()[static_cast<std::size_t>(type - 1)].caption == caption)
            chosen = type;
    TabStripSPItype.setSelected(chosen);
    TabStripSPItype_Click();
}

const std::string& TypePage::selectedCaption() const {
    return TabStripSPItype.tabs()[static_cast<std::size_t>(TabStripSPItype.selected() - 1)].caption;
}

} // namespace bitlux
