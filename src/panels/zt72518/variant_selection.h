#pragma once

#include "panels/common/panel_controls.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/marker_files.h"

#include <string>

namespace bitlux::zt72518 {

/// The choice of the dongle's version and of the chip's variant, and what each of them hides or
/// disables on the form.
class VariantSelection {
public:
    /// Its presence offers the choice of the dongle's version.
    static constexpr const char* markerFile = "72518VBopt.txt";

    /// All outlive it.
    VariantSelection(forms::Form& form, PanelControls& controls, const MarkerFiles& markers);

    /// Shows or hides what the marker file decides.
    void load();
    /// Index of the variant's opt_vb, from 2.
    [[nodiscard]] int variant() const;
    /// Whether the named file is there.
    [[nodiscard]] bool TesterPresenceFichier(const std::string& path) const;

private:
    void chooseOriginalDongle();
    void chooseDongleFor72518();
    void chooseVariant(int index);
    void enable(std::string_view name, int first, int last, bool on) const;

    forms::Form& form_;
    PanelControls& controls_;
    const MarkerFiles& markers_;

public:
    // They pan the two pictures with the choices inside their frame, in percent.
    forms::ScrollBar HScroll1;
    forms::ScrollBar VScroll1;
};

} // namespace bitlux::zt72518
