#include "chips/chip_library.h"

#include "chips/embedded_chips.h"
#include "platform/failure.h"
#include "platform/forms/near_names.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::chips {

namespace {

[[noreturn]] void refuse(std::string_view name) {
    std::vector<std::string> names;
    for (const EmbeddedChip& any : embeddedChips())
        names.emplace_back(any.name);
    const std::vector<std::string> near = forms::nearNames(name, names);
    throw Failure(Failure::Kind::OutOfRange,
                  near.empty() ? fmt::format("There is no chip \"{}\"", name)
                               : fmt::format("There is no chip \"{}\". Did you mean {}?", name,
                                             fmt::join(near, ", ")));
}

ChipPtr read(const EmbeddedChip& any) {
    const std::string file = fmt::format("{}.toml", any.name);
    ChipFile result = readChip(any.text, file);
    if (!result.chip) // the build has checked it
        throw Failure(Failure::Kind::File, describe(result.problems, file));
    return result.chip;
}

} // namespace

ChipPtr embeddedChip(std::string_view name) {
    static std::mutex guard; // a test or a script may run programs side by side
    static std::map<std::string, ChipPtr, std::less<>> known;
    const std::lock_guard lock(guard);
    if (const auto found = known.find(name); found != known.end())
        return found->second;
    for (const EmbeddedChip& any : embeddedChips())
        if (any.name == name)
            return known.emplace(name, read(any)).first->second;
    refuse(name);
}

std::string describe(const Problems& problems, const std::string& file) {
    std::string text;
    for (const Problem& problem : problems)
        text += (text.empty() ? "" : "\n") + describe(problem, file);
    return text;
}

} // namespace bitlux::chips
