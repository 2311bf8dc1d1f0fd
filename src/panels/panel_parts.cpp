#include "panels/common/panel_part.h"
#include "panels/zt72361/modes.h"
#include "panels/zt72361/watchdog.h"
#include "panels/zt72516/line_commands.h"
#include "panels/zt72516/watchdog.h"
#include "panels/zt72516/word_builder.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/diagram_page.h"
#include "panels/zt72518/dongle_version.h"
#include "panels/zt72518/last_word_labels.h"
#include "panels/zt72518/line_commands.h"
#include "panels/zt72518/mode_page.h"
#include "panels/zt72518/ram_page.h"
#include "panels/zt72518/refresh_mode.h"
#include "panels/zt72518/special_mode_page.h"
#include "panels/zt72518/watchdog.h"
#include "panels/zt72537/last_word.h"
#include "panels/zt72537/low_power.h"
#include "panels/zt72537/watchdog.h"
#include "platform/failure.h"

#include <array>

#include <fmt/format.h>

namespace bitlux {

namespace {

template <typename T>
std::unique_ptr<PanelPart> make(const PanelContext& context) {
    return std::make_unique<T>(context);
}

struct PartRow {
    const char* name;
    std::unique_ptr<PanelPart> (*make)(const PanelContext&);
};

constexpr std::array<PartRow, 18> partRows{{
    {"ZT72361 watchdog", make<zt72361::Watchdog>},
    {"ZT72361 modes", make<zt72361::Modes>},
    {"ZT72516 words", make<zt72516::WordBuilder>},
    {"ZT72516 watchdog", make<zt72516::Watchdog>},
    {"ZT72516 lines", make<zt72516::LineCommands>},
    {"ZT72518 words", make<zt72518::ChipWords>},
    {"ZT72518 last word", make<zt72518::LastWordLabels>},
    {"ZT72518 special mode", make<zt72518::SpecialModePage>},
    {"ZT72518 mode", make<zt72518::ModePage>},
    {"ZT72518 RAM", make<zt72518::RamPage>},
    {"ZT72518 refresh mode", make<zt72518::RefreshMode>},
    {"ZT72518 diagram", make<zt72518::DiagramPage>},
    {"ZT72518 dongle version", make<zt72518::DongleVersion>},
    {"ZT72518 watchdog", make<zt72518::Watchdog>},
    {"ZT72518 lines", make<zt72518::LineCommands>},
    {"ZT72537 last word", make<zt72537::LastWord>},
    {"ZT72537 watchdog", make<zt72537::Watchdog>},
    {"ZT72537 low power", make<zt72537::LowPower>},
}};

} // namespace

std::unique_ptr<PanelPart> makePanelPart(const std::string& name, const PanelContext& context) {
    for (const PartRow& row : partRows)
        if (row.name == name)
            return row.make(context);
    throw Failure(Failure::Kind::OutOfRange,
                  fmt::format("{}: there is no part \"{}\"", context.chip.file, name));
}

std::vector<std::string> panelPartNames() {
    std::vector<std::string> names;
    for (const PartRow& row : partRows)
        names.emplace_back(row.name);
    return names;
}

} // namespace bitlux
