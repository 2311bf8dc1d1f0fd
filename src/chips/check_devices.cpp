#include "chips/chip_reader.h"
#include "chips/findings.h"

#include <algorithm>
#include <set>
#include <string>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

std::uint64_t largest(const Row& row) {
    return BitList::range(0, row.width()).mask();
}

void checkReset(const Device::Reset& reset, const Findings& found) {
    const Register* owner = found.chip.find(reset.owner);
    if (owner == nullptr) {
        found.add(reset.at, fmt::format("there is no register \"{}\"", reset.owner),
                  "Name one by its title.");
        return;
    }
    const View* view = owner->find(reset.view);
    if (!reset.view.empty() && (view == nullptr || !view->ownValue()))
        found.add(reset.at,
                  fmt::format(R"("{}" has no view "{}" with a value of its own)", reset.owner,
                              reset.view),
                  "Name one that reads flags or has a `reset`, or leave `view` out.");
    else if ((reset.value & ~largest(view != nullptr ? view->row : owner->row)) != 0)
        found.add(reset.at, "the reset value has too many bits", "Give one that fits.");
}

} // namespace

void checkDevices(const Findings& found) {
    std::set<std::string> names;
    for (const Device& any : found.chip.devices) {
        if (!isChipName(any.name))
            found.add(any.at, fmt::format("\"{}\" is no name of a device", any.name),
                      "Make it of letters, digits, dashes and underscores.");
        if (!names.insert(any.name).second)
            found.add(any.at, fmt::format("there are two devices \"{}\"", any.name),
                      "Give each a name of its own.");
        const std::vector<std::string>& variants = found.chip.variants.titles;
        if (!any.variant.empty() &&
            std::find(variants.begin(), variants.end(), any.variant) == variants.end())
            found.add(any.at, fmt::format("there is no variant \"{}\"", any.variant),
                      "Name one of the `titles` in `[variants]`.");
        for (const Device::Reset& reset : any.resets)
            checkReset(reset, found);
    }
    for (const Register& any : found.chip.registers)
        for (const View& view : any.views)
            if ((view.reset.value_or(0) & ~largest(view.row)) != 0)
                found.add(view.at,
                          fmt::format("the reset value has more than {} bits", view.row.width()),
                          "Give one that fits.");
}

} // namespace bitlux::chips
