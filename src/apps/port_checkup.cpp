#include "apps/checkup.h"
#include "platform/linux/parport_list.h"

#include <algorithm>
#include <filesystem>
#include <functional>

#include <linux/parport.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

using Rank = Finding::Rank;

constexpr std::string_view portGroup = "lp";

bool exists(const std::string& name) {
    std::error_code error;
    return fs::exists(name, error);
}

class PortCheckup {
public:
    explicit PortCheckup(const Machine& machine)
        : machine_(machine),
          listFolder_(machine.root + "/proc/sys/dev/parport"),
          list_(listFolder_) {}

    Findings run() {
        for (int number = 0; number < PARPORT_MAX; ++number)
            if (exists(folderOf(number)))
                examine(number, findings_.emplace_back());
        const bool hasPorts = !findings_.empty();
        if (!hasPorts)
            findings_.push_back({Rank::Note, "parallel port", "the system knows none"});
        findings_.push_back(examinePortDriver(hasPorts));
        findings_.push_back(examineProgramDriver());
        findings_.push_back(examineGroup());
        return std::move(findings_);
    }

private:
    [[nodiscard]] std::string folderOf(int number) const {
        return fmt::format("{}/parport{}", listFolder_, number);
    }
    [[nodiscard]] bool hasProgramDriver() const {
        return exists(machine_.root + "/sys/class/ppdev");
    }
    void examine(int number, Finding& finding) const;
    void examineUse(int number, const std::string& node, Finding& finding) const;
    [[nodiscard]] std::vector<std::string> usersOf(int number) const;
    [[nodiscard]] Finding examinePortDriver(bool hasPorts) const;
    [[nodiscard]] Finding examineProgramDriver() const;
    [[nodiscard]] Finding examineGroup() const;
    [[nodiscard]] bool isAnyUsable() const {
        return std::any_of(findings_.begin(), findings_.end(), std::mem_fn(&Finding::isUsable));
    }

    const Machine& machine_;
    std::string listFolder_;
    ParportList list_;
    Findings findings_;
};

void PortCheckup::examine(int number, Finding& finding) const {
    constexpr int portsReached = 3;
    const std::string node = fmt::format("/dev/parport{}", number);
    finding.rank = Rank::Note;
    finding.subject = node;
    const int base = list_.baseAddress(number);
    if (base == 0) {
        finding.text = "has no registers of its own, so its pins cannot be driven";
        return;
    }
    finding.text = fmt::format("at 0x{:X}", base);
    if (number >= portsReached) {
        finding.text += ", not used: only parport0 to parport2 are, as LPT1 to LPT3";
        return;
    }
    finding.text = fmt::format("LPT{} at 0x{:X}", number + 1, base);
    examineUse(number, node, finding);
}

void PortCheckup::examineUse(int number, const std::string& node, Finding& finding) const {
    finding.rank = Rank::Wrong;
    if (!exists(machine_.root + node)) {
        finding.text += ", but its node is missing";
        finding.fix = hasProgramDriver() ? "sudo udevadm trigger" : "sudo modprobe ppdev";
        return;
    }
    if (!machine_.mayOpen(node)) {
        const std::string fix = groupFix(machine_, portGroup);
        finding.text += ", but you may not open it";
        finding.fix = fix.empty()
                          ? fmt::format("sudo chgrp {0} {1} && sudo chmod 660 {1}", portGroup, node)
                          : fix;
        return;
    }
    const std::vector<NodeHolder> holders = findHolders(node, machine_.root + "/proc");
    const std::vector<std::string> users = usersOf(number);
    const auto driver = std::find_if(users.begin(), users.end(), [](const std::string& user) {
        return !user.starts_with("ppdev");
    });
    if (driver != users.end()) {
        finding.text += fmt::format(", but the system's driver {} has it", *driver);
        finding.fix = *driver == "lp" ? "sudo rmmod lp" : "unload its module with sudo rmmod";
        return;
    }
    if (!users.empty() || !holders.empty()) {
        tellHolders(holders, finding);
        return;
    }
    finding.rank = Rank::Good;
    finding.text += ", can be opened";
    finding.isUsable = true;
}

/// Drivers registered on the port, in the order of their names; a program appears as "ppdev0".
std::vector<std::string> PortCheckup::usersOf(int number) const {
    std::vector<std::string> users;
    std::error_code error;
    for (fs::directory_iterator entry(folderOf(number) + "/devices", error), end;
         !error && entry != end; entry.increment(error))
        if (std::error_code gone; entry->is_directory(gone))
            users.push_back(entry->path().filename().string());
    std::sort(users.begin(), users.end());
    return users;
}

Finding PortCheckup::examinePortDriver(bool hasPorts) const {
    Finding finding{.subject = "parport_pc", .text = "the driver of the ports is loaded"};
    if (!exists(machine_.root + "/sys/module/parport_pc")) {
        if (hasPorts)
            return {Rank::Note, finding.subject, "not loaded; another driver has the ports"};
        return {Rank::Wrong, finding.subject, "the driver of the ports is not loaded",
                "sudo modprobe parport_pc"};
    }
    if (!hasPorts) {
        finding.rank = Rank::Wrong;
        finding.text += ", but has found no port";
        finding.fix = "switch the port on in the BIOS set-up, or plug in a card";
    }
    return finding;
}

Finding PortCheckup::examineProgramDriver() const {
    if (hasProgramDriver())
        return {Rank::Good, "ppdev", "the driver that lets programs use the ports is loaded"};
    return {Rank::Wrong, "ppdev", "the driver that lets programs use the ports is not loaded",
            "sudo modprobe ppdev"};
}

Finding PortCheckup::examineGroup() const {
    Finding finding{.subject = fmt::format("group {}", portGroup), .text = {}};
    switch (machine_.membership(std::string(portGroup))) {
    case Membership::InEffect:
        finding.text = fmt::format("{} is a member", machine_.user);
        break;
    case Membership::NotNeeded:
        finding.text = "not needed by root";
        break;
    case Membership::NextLogin:
        finding.rank = Rank::Wrong;
        finding.text = fmt::format("{} is a member, but not in this login", machine_.user);
        break;
    case Membership::Missing:
        if (isAnyUsable()) { // through other rights
            finding.rank = Rank::Note;
            finding.text = fmt::format("{} is no member, and needs not be", machine_.user);
            return finding;
        }
        finding.rank = Rank::Wrong;
        finding.text = fmt::format("{} is no member and may not use the ports", machine_.user);
        break;
    }
    finding.fix = groupFix(machine_, portGroup);
    return finding;
}

} // namespace

Findings examinePorts(const Machine& machine) {
    return PortCheckup(machine).run();
}

} // namespace bitlux
