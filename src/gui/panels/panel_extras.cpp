#include "gui/panels/panel_extras.h"

#include "gui/panels/auto_reads_view.h"
#include "gui/panels/sequence_stops_view.h"
#include "gui/panels/sheet_view.h"
#include "gui/panels/zt72518/extras.h"

namespace bitlux::gui {

namespace {

using AddExtras = void (*)(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

/// Each adds the extras of one part, if the panel has it.
constexpr std::array<AddExtras, 5> extraAdders{addDongleVersionExtras, addAutoReadExtras,
                                               addStopExtras, addDiagramExtras, addSheetExtras};

} // namespace

PanelExtras extrasOf(PanelForm& form, const PanelWidgets& widgets) {
    PanelExtras extras;
    for (const AddExtras add : extraAdders)
        add(form, widgets, extras);
    return extras;
}

} // namespace bitlux::gui
