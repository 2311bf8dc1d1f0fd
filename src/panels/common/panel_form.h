#pragma once

#include "chips/description.h"
#include "panels/common/held_shape.h"
#include "panels/common/hex_boxes.h"
#include "panels/common/panel_controls.h"
#include "panels/common/panel_part.h"
#include "panels/common/panel_sequence.h"
#include "panels/common/panel_snapshots.h"
#include "panels/common/panel_words.h"
#include "panels/common/read_alls.h"
#include "panels/common/register_pages.h"
#include "panels/common/status_row.h"
#include "panels/common/variant_rules.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// The shape of a panel's words: while it is in front the session has the chip's shape; afterwards
/// its words use whatever shape the session has.
[[nodiscard]] PanelWords::Travel travelOf(const chips::PanelLayout& panel);

/// The control panel of a chip: made from its description, and from the parts that the description
/// names.
///
/// While it is open or in front, as the description says, the words of the whole program have the
/// chip's shape; then the one that was applied last is restored. Forms that belong to it are
/// unloaded with it; those that are made from the description are hidden.
class PanelForm : public forms::Form {
public:
    /// `name` is that of the form. An unknown part named by the chip raises Failure (OutOfRange).
    PanelForm(forms::FormSet& set, const std::string& name, chips::ChipPtr chip,
              const PanelSurroundings& outside);

    [[nodiscard]] const chips::Chip& chip() const { return *chip_; }

    /// A part; null when the panel does not have it.
    template <typename T>
    [[nodiscard]] T* findPart() const {
        for (const auto& any : parts_)
            if (auto* wanted = dynamic_cast<T*>(any.get()))
                return wanted;
        return nullptr;
    }
    /// The same; raises Failure (OutOfRange) when there is none.
    template <typename T>
    [[nodiscard]] T& part() const {
        T* found = findPart<T>();
        if (found == nullptr)
            PanelContext::missingPart();
        return *found;
    }

    /// Words have the chip's shape from now on.
    void takeShape() { shape_.take(); }
    /// Settings were applied: a panel in front keeps its shape.
    void keepShape();

    /// Whether a page of the outer tabs is visible, by its content.
    [[nodiscard]] bool shows(std::string_view page) const;

private:
    void makeParts();
    void addCompanions();
    void registerProcedures();
    void load();
    void unload();
    void showMarked(bool present);

    const PanelSurroundings outside_;
    const chips::ChipPtr chip_;
    HeldShape shape_;

public:
    PanelControls pageControls;
    PanelWords words;
    StatusRow status;
    PanelSequence sequence;
    RegisterPages registers;
    HexBoxes hexBoxes;
    VariantRules variants;
    PanelSnapshots snapshots;
    forms::TabStrip outerTabs;
    forms::TabStrip registerTabs; ///< in the order of Chip::registerPages

private:
    std::vector<std::unique_ptr<PanelPart>> parts_;
    std::unique_ptr<ReadAlls> readAlls_; ///< press buttons of the parts as well
};

} // namespace bitlux
