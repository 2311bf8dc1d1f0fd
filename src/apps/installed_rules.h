#pragma once

#include "apps/machine.h"

#include <string>

namespace bitlux {

/// The udev rules of a machine that are this program's.
class InstalledRules {
public:
    explicit InstalledRules(const Machine& machine);

    /// Of the package, and not an administrator's.
    [[nodiscard]] bool isPackaged() const { return isPackaged_; }
    [[nodiscard]] bool isThere() const { return isPackaged_ || !text_.empty(); }
    [[nodiscard]] std::string file() const;
    /// Whether they let users open the devices with these numbers.
    [[nodiscard]] bool cover(const UsbNumbers& numbers) const;
    /// What a user has to do who may not open a device with these numbers.
    [[nodiscard]] std::string fix(const UsbNumbers& numbers) const;

private:
    const Machine& machine_;
    bool isPackaged_;
    std::string text_;
};

} // namespace bitlux
