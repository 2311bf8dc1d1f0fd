#include "bench/chip.h"

#include "platform/failure.h"
#include "platform/forms/near_names.h"
#include "platform/letters.h"

#include <set>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

std::string fullName(const ChipSwitch& one) {
    return one.group + "/" + one.name;
}

[[noreturn]] void refuse(std::string_view name, std::string_view problem,
                         const std::vector<std::string>& others) {
    throw Failure(Failure::Kind::OutOfRange,
                  fmt::format("{} \"{}\"{}{}", problem, name, others.empty() ? "" : "; there is ",
                              fmt::join(others, ", ")));
}

/// What the text may have meant, with the group or without it.
std::vector<std::string> nearSwitches(const Chip& chip, std::string_view name) {
    std::set<std::string> names;
    for (const ChipSwitch& one : chip.switches())
        names.insert({one.name, fullName(one)});
    return forms::nearNames(name, {names.begin(), names.end()});
}

} // namespace

std::size_t switchNamed(const Chip& chip, std::string_view name) {
    std::vector<std::size_t> found;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < chip.switches().size(); ++i) {
        const ChipSwitch& one = chip.switches()[i];
        if (equalIgnoringCase(fullName(one), name))
            return i;
        if (!equalIgnoringCase(one.name, name))
            continue;
        found.push_back(i);
        names.push_back(fullName(one));
    }
    if (found.size() > 1)
        refuse(name, "More than one switch is called", names);
    if (found.empty())
        refuse(name, "The chip has no switch", nearSwitches(chip, name));
    return found.front();
}

} // namespace bitlux
