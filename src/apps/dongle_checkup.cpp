#include "apps/checkup.h"
#include "apps/installed_rules.h"
#include "apps/udev_rules.h"
#include "platform/linux/ftdi_chip.h"
#include "platform/printable.h"

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

using Rank = Finding::Rank;

constexpr std::string_view listName = "dongles.conf";

/// Whether the device is plugged into another machine and comes over the network: the kernel's
/// usbip puts it behind a host controller of its own.
bool comesByUsbip(const UsbCandidate& candidate) {
    std::error_code error;
    const fs::path folder = fs::canonical(candidate.folder, error);
    return std::any_of(folder.begin(), folder.end(),
                       [](const fs::path& part) { return part.string().starts_with("vhci_hcd"); });
}

class DongleCheckup {
public:
    DongleCheckup(const Machine& machine, const DongleNumbers& numbers)
        : machine_(machine), rules_(machine), numbers_(numbers) {}

    Findings run() {
        examineDevices();
        examineList();
        examineRules();
        return std::move(findings_);
    }

private:
    void examineDevices();
    void examineList();
    void examineRules();
    void examine(const UsbCandidate& candidate, Finding& finding) const;
    void examineDongle(const UsbCandidate& candidate, Finding& finding) const;
    void examineStranger(const UsbCandidate& candidate, Finding& finding) const;
    const Machine& machine_;
    InstalledRules rules_;
    const DongleNumbers& numbers_;
    Findings findings_;
};

void DongleCheckup::examineDevices() {
    const std::string bus = machine_.root + "/sys/bus/usb";
    std::error_code error;
    if (!fs::exists(bus, error)) {
        findings_.push_back({Rank::Note, "dongle", "none: this system has no USB",
                             "give the USB devices to this container or virtual machine, if it "
                             "is one"});
        return;
    }
    for (const UsbCandidate& candidate : findUsbCandidates(bus + "/devices"))
        if (!isFtdi(candidate.numbers) || numbers_.contains(candidate.numbers))
            examine(candidate, findings_.emplace_back());
    if (findings_.empty())
        findings_.push_back({Rank::Note, "dongle", "none is plugged in",
                             "plug it in; lsusb lists what the system sees"});
}

void DongleCheckup::examine(const UsbCandidate& candidate, Finding& finding) const {
    const std::string node = usbNode(candidate);
    finding.subject = node;
    finding.text = numbersText(candidate.numbers);
    if (!candidate.name.empty())
        finding.text += fmt::format(" \"{}\"", printable(candidate.name, 60));
    if (!candidate.serial.empty())
        finding.text += fmt::format(", serial number {},", printable(candidate.serial, 60));
    if (comesByUsbip(candidate))
        finding.text += candidate.serial.empty() ? ", from another machine by usbip,"
                                                 : " from another machine by usbip,";
    const bool isListed = numbers_.contains(candidate.numbers);
    const bool isDongle =
        isListed || (machine_.mayOpen(node) && machine_.isDongle && machine_.isDongle(candidate));
    if (isDongle)
        examineDongle(candidate, finding);
    else
        examineStranger(candidate, finding);
}

void DongleCheckup::examineDongle(const UsbCandidate& candidate, Finding& finding) const {
    const std::string node = usbNode(candidate);
    finding.text += numbers_.contains(candidate.numbers)
                        ? fmt::format(" is a dongle by {}", listName)
                        : " says that it is a dongle";
    std::error_code error;
    finding.rank = Rank::Wrong;
    if (!fs::exists(machine_.root + node, error)) {
        finding.text += ", but its node is missing";
        finding.fix = nodeFix;
        return;
    }
    if (!machine_.mayOpen(node)) {
        finding.text += ", but you may not open it";
        finding.fix = rules_.fix(candidate.numbers);
        return;
    }
    const Binding binding = bindingOf(candidate.folder, 0);
    if (binding.isPrograms()) {
        tellHolders(findHolders(node, machine_.root + "/proc"), finding);
        return;
    }
    if (!binding.driver.empty()) {
        finding.text += fmt::format(", but the system's driver {} has it", binding.driver);
        finding.fix = fmt::format("echo {} | sudo tee /sys/bus/usb/drivers/{}/unbind",
                                  binding.interface, binding.driver);
        return;
    }
    finding.rank = Rank::Good;
    finding.text += " and can be opened";
    finding.isUsable = true;
}

void DongleCheckup::examineStranger(const UsbCandidate& candidate, Finding& finding) const {
    const bool mayAsk = machine_.mayOpen(usbNode(candidate));
    const Binding binding = bindingOf(candidate.folder, 0);
    finding.rank = Rank::Note;
    finding.text += mayAsk ? " is not known as a dongle"
                           : " cannot be asked whether it is a dongle: you may not open it";
    if (!binding.driver.empty() && !binding.isPrograms())
        finding.text += fmt::format("; the system's driver {} has it", binding.driver);
    finding.text += fmt::format(". If it is one: sudo mkdir -p /etc/bitlux-forge && echo {} | "
                                "sudo tee -a /etc/bitlux-forge/{}",
                                numbersText(candidate.numbers), listName);
    if (!mayAsk)
        finding.text +=
            " && " + (rules_.isPackaged() ? std::string(udevReloadCommand) : udevInstallCommand());
}

void DongleCheckup::examineList() {
    for (const std::string& problem : numbers_.problems())
        findings_.push_back({Rank::Wrong, std::string(listName), problem});
    const std::size_t count = numbers_.all().size();
    if (count == 0)
        findings_.push_back({Rank::Note, std::string(listName), "lists no device"});
    else
        findings_.push_back(
            {Rank::Good, std::string(listName),
             fmt::format("lists {} kind{} of device", count, count == 1 ? "" : "s")});
}

void DongleCheckup::examineRules() {
    std::string missing;
    for (const UsbNumbers& numbers : numbers_.all())
        if (!rules_.cover(numbers))
            (missing += ' ') += numbersText(numbers);
    Finding finding{.subject = "udev rules", .text = rules_.file()};
    if (!missing.empty()) {
        finding.rank = missingRuleRank(machine_);
        finding.text +=
            rules_.isThere() ? " has no rule for" : " is missing; it gives users the right to open";
        finding.text += missing;
        finding.fix = udevInstallCommand();
    } else if (!rules_.isThere()) {
        finding.rank = Rank::Note;
        finding.text = fmt::format("none; none are needed while {} lists no device", listName);
    }
    findings_.push_back(std::move(finding));
}

} // namespace

Findings examineDongles(const Machine& machine, const DongleNumbers& numbers) {
    return DongleCheckup(machine, numbers).run();
}

} // namespace bitlux
