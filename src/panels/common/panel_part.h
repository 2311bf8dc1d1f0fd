#pragma once

#include "chips/description.h"
#include "panels/common/held_shape.h"
#include "panels/common/panel_controls.h"
#include "panels/common/panel_sequence.h"
#include "panels/common/panel_surroundings.h"
#include "panels/common/panel_words.h"
#include "panels/common/register_pages.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// A part of a panel that no description can express: it has its own controls and procedures, or
/// adds to the behaviour of a register's controls.
class PanelPart {
public:
    PanelPart() = default;
    virtual ~PanelPart() = default;
    PanelPart(const PanelPart&) = delete;
    PanelPart& operator=(const PanelPart&) = delete;

    /// The form is loaded, or loaded again.
    virtual void load() {}
    /// The form is about to be unloaded; questions to the user belong here.
    virtual void unload() {}
};

/// A panel as its parts see it. All of it lives as long as the form.
struct PanelContext {
    const PanelSurroundings& outside;
    const chips::Chip& chip;
    forms::Form& form;
    PanelControls& controls;
    PanelWords& words;
    HeldShape& shape;
    RegisterPages& pages;
    PanelSequence& sequence;
    forms::TabStrip& outerTabs;
    const std::vector<std::unique_ptr<PanelPart>>& parts; ///< the parts made before

    /// A part that was made before; raises Failure (OutOfRange) when the panel does not have it.
    template <typename T>
    [[nodiscard]] T& part() const {
        for (const auto& any : parts)
            if (auto* wanted = dynamic_cast<T*>(any.get()))
                return *wanted;
        missingPart();
    }

    [[noreturn]] static void missingPart();
};

/// Makes a part by its name in a chip's file. Raises Failure (OutOfRange) for an unknown name.
std::unique_ptr<PanelPart> makePanelPart(const std::string& name, const PanelContext& context);

/// The names that makePanelPart accepts.
std::vector<std::string> panelPartNames();

} // namespace bitlux
