#include "apps/checkup.h"

#include <fmt/format.h>

namespace bitlux {

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
