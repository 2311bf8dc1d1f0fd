#pragma once

#include "platform/linux/usb_connection.h"
#include "platform/linux/usb_devices.h"
#include "platform/linux/usb_transfers.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace bitlux {

/// A dongle held exclusively, with the buffers of its two pipes. Whoever shares it uses it from
/// one thread.
class OpenDongle {
public:
    /// Opens and claims; status() is the result. `node` is as "/dev/bus/usb/001/004".
    OpenDongle(const std::string& node, UsbCandidate candidate);
    ~OpenDongle();
    OpenDongle(const OpenDongle&) = delete;
    OpenDongle& operator=(const OpenDongle&) = delete;

    /// Success while the dongle is held, or why it is not.
    [[nodiscard]] UsbStatus status() const;

    UsbStatus addInterface(int number, int alternateSetting);
    UsbStatus setConfiguration(int index);
    /// Whether both were done. Undoing either stops reading and writing.
    [[nodiscard]] bool isSetUp() const { return hasInterface_ && hasConfiguration_; }
    UsbStatus removeInterface();
    UsbStatus leaveConfiguration();

    UsbStatus clearHalt(std::uint8_t endpointAddress);
    /// Pending and unread frames are lost. Stops reading and writing.
    UsbStatus reset();

    UsbStatus startReading(const UsbBuffers& buffers);
    UsbStatus startWriting(const UsbBuffers& buffers);
    void stopReading() { reading_.reset(); }
    void stopWriting() { writing_.reset(); }
    UsbStatus read(UsbFrame& frame, std::int64_t wait);
    UsbStatus write(const UsbFrame& frame);

private:
    UsbStatus claim();
    UsbStatus chooseSetting(int alternateSetting);
    UsbStatus expectActive(int configuration);
    UsbStatus undo(bool& step);
    UsbStatus queueAll();
    std::optional<UsbStatus> whatHasCome(UsbFrame& frame);
    std::optional<UsbStatus> afterReading(UsbStatus outcome, bool isStalled);
    void endHalt();
    void takeWritten();

    UsbCandidate candidate_;
    UsbConnection connection_;
    UsbStatus claimed_;
    std::optional<int> setting_; // the alternate setting that was chosen here
    bool hasInterface_ = false;
    bool hasConfiguration_ = false;
    std::unique_ptr<UsbTransfers> reading_;
    std::unique_ptr<UsbTransfers> writing_;
    int readFailuresAllowed_ = 0;
    int readFailures_ = 0; // in a row
    bool writeFailed_ = false;
};

} // namespace bitlux
