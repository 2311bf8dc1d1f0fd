#pragma once

#include "panels/common/held_shape.h"
#include "panels/common/key_filters.h"
#include "panels/common/panel_controls.h"
#include "panels/common/register_pages.h"
#include "panels/zt72518/chip_link.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/diagram_page.h"
#include "panels/zt72518/flag_pages.h"
#include "panels/zt72518/mode_page.h"
#include "panels/zt72518/panel_variables.h"
#include "panels/zt72518/ram_page.h"
#include "panels/zt72518/sequence_decoder.h"
#include "panels/zt72518/sequencer.h"
#include "panels/zt72518/special_mode_page.h"
#include "panels/zt72518/status_labels.h"
#include "panels/zt72518/variant_selection.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/form.h"
#include "platform/marker_files.h"
#include "session/session.h"
#include "transfer/dongle_link.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <functional>

namespace bitlux::zt72518 {

/// The control panel of the ZT7251x family: one form to the user, made of parts that bring their
/// controls and procedures.
///
/// A window finds the pages of registers in oldchips::zt72518::pages, each with its registers, and
/// every control that a row there names by PanelControls::get.
class PanelForm : public forms::Form {
public:
    /// What the form works with; all outlive it.
    struct Parts {
        Session& session;
        WordEngine& engine;
        DongleLink& dongle;
        const Desk& desk;
        const MarkerFiles& markers;
        const Clock& clock;
    };

    /// The outer pages, tabs of tab_518(0); tab_518(1) has the pages of registers.
    enum OuterPage : std::uint8_t {
        SequencePage = 1,
        Diagram,
        RegistersPage,
        FlagsPage,
        WatchdogPage,
    };

    PanelForm(forms::FormSet& set, const Parts& parts);

    [[nodiscard]] PanelVariables& variables() { return variables_; }

private:
    void addRefreshMirror();
    void registerProcedures();
    void registerFilters();
    void load();
    /// The shape of the chip's words; the panel's labels want to be refreshed.
    void takeOver();
    void unload();
    void tab_518_Click(int index);

    Session& session_;
    MessageBoxes& boxes_;
    PanelVariables variables_;
    HeldShape shape_;
    KeyFilters filters_;

public:
    /// Where the pages send commands of a sequence.
    CommandSinks sinks{.append = [](const std::string&, const std::string&) {},
                       .store = [](const std::string&, const std::string&) {}};

    ChipLink link;
    PanelControls pageControls;
    ChipWords words;
    RegisterPages registers;
    SequenceDecoder decoder;
    StatusLabels status;
    forms::ControlArray<forms::TabStrip> tab_518;

    // These add to what the registers have.
    SpecialModePage specialMode;
    ModePage mode;
    RamPage ram;
    FlagPages flags;
    DiagramPage diagram;
    VariantSelection selection;

    Sequencer sequencer;
};

} // namespace bitlux::zt72518
