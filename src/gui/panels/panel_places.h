#pragma once

#include "chips/description.h"

#include <cstddef>
#include <string>
#include <vector>

/// The places of what a chip's description contains on the pages of its panel's window.
namespace bitlux::gui {

/// A view and its register.
struct PlacedView {
    const chips::Register* owner;
    const chips::View* view;
};

using Registers = std::vector<const chips::Register*>;

/// A button that belongs to no register: a command, or one that presses or reads several.
struct Action {
    const std::string* title;
    const std::string* group; ///< heading; may be empty
    std::string note;
    const chips::ControlName* button;
    const chips::ControlName* append; ///< appends its line to the sequence
};
using Actions = std::vector<Action>;

/// The registers of a page; those that share their write row are together.
[[nodiscard]] std::vector<Registers> registersOn(const chips::Chip& chip, const std::string& page);
/// The actions of a page of registers, or of chips::statusPage.
[[nodiscard]] Actions actionsOn(const chips::Chip& chip, const std::string& page);
/// The headings of actions, without repetitions.
[[nodiscard]] std::vector<std::string> groupsOf(const Actions& actions);
/// The views of a register on the register's own page.
[[nodiscard]] std::vector<const chips::View*> ownViews(const chips::Chip& chip,
                                                       const chips::Register& owner);
/// The views on a page of registers that belong to registers of other pages.
[[nodiscard]] std::vector<PlacedView> guestsOn(const chips::Chip& chip, const std::string& page);
/// Whether there are views beside all pages.
[[nodiscard]] bool hasViewsBesidePages(const chips::Chip& chip);
/// The views of an outer page of flags, by its index: those that name it, and on the first page
/// also those that name a page that does not exist.
[[nodiscard]] std::vector<PlacedView> flagsOn(const chips::Chip& chip, std::size_t outerPage);

// Of a form beside the panel.
[[nodiscard]] Registers registersBeside(const chips::Chip& chip, const std::string& form);
[[nodiscard]] Actions actionsBeside(const chips::Chip& chip, const std::string& form);
/// The views of registers that are not on the form.
[[nodiscard]] std::vector<PlacedView> viewsBeside(const chips::Chip& chip, const std::string& form);

} // namespace bitlux::gui
