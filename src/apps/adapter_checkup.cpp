#include "apps/checkup.h"
#include "apps/installed_rules.h"
#include "apps/udev_rules.h"
#include "platform/adapter.h"
#include "platform/linux/linux_adapter_host.h"
#include "platform/printable.h"

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

using Rank = Finding::Rank;

constexpr std::string_view settingsName = "adapters.conf";

class AdapterCheckup {
public:
    AdapterCheckup(const Machine& machine, const AdapterSettings& settings)
        : machine_(machine), rules_(machine), settings_(settings) {}

    Findings run() {
        const std::vector<FtdiDevice> devices =
            findFtdiDevices(machine_.root + "/sys/bus/usb/devices");
        for (const FtdiDevice& device : devices)
            examine(device, findings_.emplace_back());
        if (devices.empty())
            findings_.push_back({Rank::Note, "adapter", "none is plugged in"});
        examineSettings();
        if (!devices.empty())
            examineRules(devices);
        return std::move(findings_);
    }

private:
    void examine(const FtdiDevice& device, Finding& finding) const;
    void examineUse(const FtdiDevice& device, Finding& finding) const;
    void examineSettings();
    void examineRules(const std::vector<FtdiDevice>& devices);

    const Machine& machine_;
    InstalledRules rules_;
    const AdapterSettings& settings_;
    Findings findings_;
};

void AdapterCheckup::examine(const FtdiDevice& device, Finding& finding) const {
    const std::string node = ftdiNode(device);
    const Adapter adapter{.type = device.type, .serial = device.serial, .place = device.place};
    finding.rank = Rank::Wrong;
    finding.subject = node;
    finding.text = printable(adapter.name(), longestAdapterName);
    if (!device.serial.empty())
        finding.text += " at " + device.place;
    std::error_code error;
    if (!fs::exists(machine_.root + node, error)) {
        finding.text += ", but its node is missing";
        finding.fix = nodeFix;
    } else if (!machine_.mayOpen(node)) {
        finding.text += ", but you may not open it";
        finding.fix = rules_.fix(device.numbers);
    } else if (!wishesFor(device, settings_).problem.empty()) {
        finding.text += fmt::format(", but {} is wrong about it", settingsName);
        finding.fix = fmt::format("correct {}", settingsName);
    } else {
        examineUse(device, finding);
    }
}

/// The kernel's serial driver gives the adapter up, unless somebody talks through it.
void AdapterCheckup::examineUse(const FtdiDevice& device, Finding& finding) const {
    const int channel = wishesFor(device, settings_).channel;
    const std::string tty = ttyOf(device, channel);
    const std::string processes = machine_.root + "/proc";
    const std::vector<NodeHolder> talking =
        tty.empty() ? std::vector<NodeHolder>() : findHolders("/dev/" + tty, processes);
    if (!talking.empty()) {
        finding.text +=
            fmt::format(", but it is in use as /dev/{} by {}", tty, holdersText(talking));
        finding.fix = "close that program";
        return;
    }
    if (bindingOf(device.folder, channel).isPrograms()) {
        tellHolders(findHolders(ftdiNode(device), processes), finding);
        return;
    }
    finding.rank = Rank::Good;
    finding.text += ", can be opened";
    finding.isUsable = true;
}

void AdapterCheckup::examineSettings() {
    for (const std::string& problem : settings_.problems())
        findings_.push_back({Rank::Wrong, std::string(settingsName), problem});
    if (settings_.problems().empty() && settings_.count() != 0)
        findings_.push_back({Rank::Good, std::string(settingsName),
                             fmt::format("is for {} adapter{}", settings_.count(),
                                         settings_.count() == 1 ? "" : "s")});
}

void AdapterCheckup::examineRules(const std::vector<FtdiDevice>& devices) {
    Finding finding{.subject = "udev rules", .text = rules_.file()};
    const bool coversAll =
        std::all_of(devices.begin(), devices.end(),
                    [this](const FtdiDevice& device) { return rules_.cover(device.numbers); });
    if (!coversAll) {
        finding.rank = missingRuleRank(machine_);
        finding.text += rules_.isThere() ? " has no rule for adapters"
                                         : " is missing; it gives users the right to open adapters";
        finding.fix = udevInstallCommand();
    }
    findings_.push_back(std::move(finding));
}

} // namespace

Findings examineAdapters(const Machine& machine) {
    return AdapterCheckup(machine, AdapterSettings(machine.adapterFiles)).run();
}

} // namespace bitlux
