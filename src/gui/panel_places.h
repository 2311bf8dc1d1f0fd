#pragma once

#include "chips/description.h"

#include <cstddef>
#include <string>
#include <vector>

/// On which page of a panel's window stands what a chip's description tells.
namespace bitlux::gui {

/// A view and the register that it belongs to.
struct PlacedView {
    const chips::Register* owner;
    const chips::View* view;
};

using Registers = std::vector<const chips::Register*>;
using Commands = std::vector<const chips::Command*>;

/// The registers of a page; those that share their write row are together.
[[nodiscard]] std::vector<Registers> registersOn(const chips::Chip& chip, const std::string& page);
[[nodiscard]] Commands commandsOn(const chips::Chip& chip, const std::string& page);
/// The views of a register that stand on the register's own page.
[[nodiscard]] std::vector<const chips::View*> ownViews(const chips::Chip& chip,
                                                       const chips::Register& owner);
/// The views of registers of other pages that stand on a page of registers.
[[nodiscard]] std::vector<PlacedView> guestsOn(const chips::Chip& chip, const std::string& page);
/// The views of an outer page of flags, by its index: those that name it, and on the first one also
/// those that name a page that there is not.
[[nodiscard]] std::vector<PlacedView> flagsOn(const chips::Chip& chip, std::size_t outerPage);

} // namespace bitlux::gui
