#pragma once

#include "platform/linux/ftdi_chip.h"

#include <string>
#include <vector>

namespace bitlux {

/// An adapter that is plugged in, as the kernel knows it.
struct FtdiDevice {
    const FtdiChip* chip = nullptr;
    UsbNumbers numbers;
    int bus = 0;
    int address = 0;    ///< on the bus; a new one each time it is plugged in
    std::string type;   ///< as "FT232R"; the very chip where its product name tells it
    std::string serial; ///< or empty
    std::string place;  ///< where it is plugged in, as "1-2"
    std::string folder; ///< its folder in sysfs
    int lines = 8;      ///< how many its chip has
};

/// By place; from what the kernel has already read of the devices, without accessing them.
/// `devices` is the folder of the kernel's list.
std::vector<FtdiDevice> findFtdiDevices(const std::string& devices);

/// The device node below `nodes`, as "/dev/bus/usb/001/004".
std::string ftdiNode(const FtdiDevice& device, const std::string& nodes = "/dev/bus/usb");

/// The serial port that the kernel's driver makes of a channel, as "ttyUSB0"; empty for none.
std::string ttyOf(const FtdiDevice& device, int channel);

} // namespace bitlux
