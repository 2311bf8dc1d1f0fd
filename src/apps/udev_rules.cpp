#include "apps/udev_rules.h"

#include "platform/linux/ftdi_chip.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

std::string vendorMatch(const UsbNumbers& numbers) {
    return fmt::format("ATTR{{idVendor}}==\"{:04x}\"", numbers.vendor);
}

std::string productMatch(const UsbNumbers& numbers) {
    return fmt::format("ATTR{{idProduct}}==\"{:04x}\"", numbers.product);
}

std::string ruleFor(const UsbNumbers& numbers) {
    return fmt::format("SUBSYSTEM==\"usb\", {}, {}, MODE=\"0660\", GROUP=\"{}\", "
                       "TAG+=\"uaccess\"\n",
                       vendorMatch(numbers), productMatch(numbers), dongleGroup);
}

} // namespace

std::string udevInstallCommand() {
    return fmt::format("bitlux doctor --udev | sudo tee {} && {}", udevRuleFile, udevReloadCommand);
}

std::string udevRules(const std::vector<UsbNumbers>& numbers) {
    std::string rules = fmt::format(
        "# Lets users open FTDI adapters and the dongles of dongles.conf: whoever sits at this\n"
        "# machine, and from anywhere the members of the group {}. To install it:\n"
        "#   {}\n",
        dongleGroup, udevInstallCommand());
    for (const UsbNumbers& pair : numbers)
        if (!isFtdi(pair))
            rules += ruleFor(pair);
    for (const std::uint16_t product : ftdiProducts)
        rules += ruleFor({ftdiVendor, product});
    return rules;
}

bool hasUdevRule(std::string_view rules, const UsbNumbers& numbers) {
    const std::string vendor = vendorMatch(numbers);
    const std::string product = productMatch(numbers);
    while (!rules.empty()) {
        const std::size_t length = std::min(rules.find('\n'), rules.size());
        const std::string_view line = rules.substr(0, length);
        rules.remove_prefix(std::min(length + 1, rules.size()));
        if (!line.starts_with('#') && line.find(vendor) != std::string_view::npos &&
            line.find(product) != std::string_view::npos)
            return true;
    }
    return false;
}

} // namespace bitlux
