#include "apps/checkup.h"

#include "apps/udev_rules.h"

#include <filesystem>

#include <fmt/format.h>

namespace bitlux {

namespace fs = std::filesystem;

Binding bindingOf(const std::string& folder, int interface) {
    const std::string start = fs::path(folder).filename().string() + ":";
    const std::string end = fmt::format(".{}", interface);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), none; !error && entry != none;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (!name.starts_with(start) || !name.ends_with(end))
            continue;
        std::error_code unbound;
        return {name, fs::read_symlink(entry->path() / "driver", unbound).filename().string()};
    }
    return {};
}

Finding::Rank missingRuleRank(const Machine& machine) {
    return machine.membership(std::string(dongleGroup)) == Membership::NotNeeded
               ? Finding::Rank::Note
               : Finding::Rank::Wrong;
}

std::string groupFix(const Machine& machine, std::string_view group) {
    switch (machine.membership(std::string(group))) {
    case Membership::Missing:
        return fmt::format("sudo usermod -a -G {} {}, then log in again", group, machine.user);
    case Membership::NextLogin:
        return "log out and in again; this login began before you were in the group";
    case Membership::InEffect:
    case Membership::NotNeeded:
        return {};
    }
    return {};
}

void tellHolders(const std::vector<NodeHolder>& holders, Finding& finding) {
    const std::string names = holdersText(holders);
    finding.rank = Finding::Rank::Wrong;
    finding.text += names.empty() ? ", but a program that you may not see holds it"
                                  : fmt::format(", but it is held by {}", names);
    finding.fix = names.empty() ? "sudo bitlux doctor, which names the program; then close it"
                                : "close that program";
}

} // namespace bitlux
