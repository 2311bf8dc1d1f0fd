#pragma once

#include "panels/common/panel_part.h"

#include <string>

namespace bitlux::zt72518 {

/// The choice of the dongle's version, which a marker file offers, and the restrictions of an old
/// one.
class DongleVersion : public PanelPart {
public:
    /// The marker file that offers the choice.
    static constexpr const char* markerFile = "72518VBopt.txt";
    static constexpr ControlRef versions{"opt_vb", 0};
    static constexpr int count = 2;
    /// Frames around the versions and around the variants of the chip.
    static constexpr ControlRef versionFrame{"vb_otp", 0};
    static constexpr ControlRef variantFrame{"vb_otp", 1};

    explicit DongleVersion(const PanelContext& context);

    /// Shows or hides what depends on the marker file.
    void load() override;

private:
    /// Whether the named file exists.
    [[nodiscard]] bool TesterPresenceFichier(const std::string& path) const;
    void chooseOriginal() const;
    void chooseFor72518() const;

    forms::Form& form_;
    PanelControls& controls_;
    const MarkerFiles& markers_;

public:
    // They scroll the two pictures with the choices inside their frame, in percent.
    forms::ScrollBar HScroll1;
    forms::ScrollBar VScroll1;
};

} // namespace bitlux::zt72518
