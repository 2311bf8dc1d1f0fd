#pragma once

#include "platform/adapter.h"
#include "platform/linux/adapter_settings.h"
#include "platform/linux/ftdi_devices.h"
#include "platform/linux/ftdi_link.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// Where a machine lists its adapters.
struct AdapterPlaces {
    std::string devices = "/sys/bus/usb/devices"; ///< the kernel's list
    std::string nodes = "/dev/bus/usb";
    std::string processes = "/proc"; ///< the kernel's folder of them
    std::vector<std::string> settingsFiles = AdapterSettings::files();
    std::chrono::nanoseconds timeout = FtdiLink::standardTimeout;
};

/// Which adapters a program may see, and what it wants of them whatever the files say.
struct AdapterChoice {
    bool isDemanded = false; ///< one must be there
    std::string serial{};    ///< only the one that has it; all of them when it is empty
    std::optional<int> clock{};
    bool keepsLines = false; ///< true: also where the files do not say so
};

/// The adapters of a machine, reached through libftdi. A search opens none.
class LinuxAdapterHost : public AdapterHost {
public:
    explicit LinuxAdapterHost(AdapterPlaces places = {}, AdapterChoice choice = {});

    std::vector<Adapter> find() override;
    /// The clock must be one that the chip has, the section of the adapter free of problems, and
    /// its serial port not in use.
    std::unique_ptr<AdapterLink> open(const Adapter& adapter) override;

    /// Raises Failure (PortUnusable), naming the others, when the demanded adapter is not there.
    void demandChosen();

private:
    [[nodiscard]] std::vector<FtdiDevice> devices() const;
    [[nodiscard]] Adapter adapterOf(const FtdiDevice& device, const AdapterSettings& files) const;
    void demandFreeTty(const FtdiDevice& device, int channel, const std::string& name) const;
    [[noreturn]] void failToOpen(UsbStatus status, const FtdiDevice& device,
                                 const std::string& name) const;

    AdapterPlaces places_;
    AdapterChoice choice_;
};

/// The wishes for an adapter of this device.
AdapterWishes wishesFor(const FtdiDevice& device, const AdapterSettings& files);

} // namespace bitlux
