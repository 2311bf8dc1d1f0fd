#include "apps/machine.h"

#include "platform/linux/adapter_settings.h"
#include "platform/linux/dongle_search.h"
#include "transfer/dongle_link.h"

#include <algorithm>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

bool isInEffect(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(::getgroups(0, nullptr), 0)));
    const int count = ::getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(static_cast<std::size_t>(std::max(count, 0)));
    return group == ::getegid() || std::find(groups.begin(), groups.end(), group) != groups.end();
}

bool lists(const struct group& entry, const std::string& user) {
    for (char* const* member = entry.gr_mem; *member != nullptr; ++member)
        if (*member == user)
            return true;
    const passwd* const account = ::getpwnam(user.c_str());
    return account != nullptr && account->pw_gid == entry.gr_gid;
}

Membership membershipOf(const std::string& user, const std::string& group) {
    if (::geteuid() == 0)
        return Membership::NotNeeded;
    const struct group* const entry = ::getgrnam(group.c_str());
    if (entry == nullptr)
        return Membership::Missing;
    if (isInEffect(entry->gr_gid))
        return Membership::InEffect;
    return lists(*entry, user) ? Membership::NextLogin : Membership::Missing;
}

std::string userName() {
    const passwd* const account = ::getpwuid(::geteuid());
    return account == nullptr ? fmt::format("{}", ::geteuid()) : account->pw_name;
}

bool saysThatItIsADongle(const UsbCandidate& candidate) {
    const std::vector<UsbCandidate> dongles =
        DongleSearch(UsbPlaces{}).find(DongleLink::deviceInterfaceClass);
    return std::any_of(dongles.begin(), dongles.end(),
                       [&](const UsbCandidate& dongle) { return isSameDevice(dongle, candidate); });
}

} // namespace

Machine thisMachine() {
    const std::string user = userName();
    return {.root = {},
            .dongleFiles = DongleNumbers::files(),
            .adapterFiles = AdapterSettings::files(),
            .user = user,
            .membership = [user](const std::string& group) { return membershipOf(user, group); },
            .mayOpen =
                [](const std::string& node) {
                    return ::faccessat(AT_FDCWD, node.c_str(), R_OK | W_OK, AT_EACCESS) == 0;
                },
            .isDongle = saysThatItIsADongle};
}

} // namespace bitlux
