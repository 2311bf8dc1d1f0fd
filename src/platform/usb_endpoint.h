#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// A frame on a pipe of the dongle, in either direction.
using UsbFrame = std::array<std::uint8_t, 8>;

/// Result of a call; 0 is success.
enum class UsbStatus : std::int32_t {
    Success = 0,
    NothingRead, ///< no frame arrived within the time-out
    NoFrame,     ///< something other than a frame arrived: fewer or more than eight bytes
    NotSetUp,    ///< the preceding calls were not made
    NoRights,    ///< the system does not let this user open the device
    Busy,        ///< another program holds the device
    Failed,      ///< the transfer failed, as on a stalled pipe
    Gone,        ///< the device no longer exists
};

/// Buffers that the transport keeps for a pipe.
struct UsbBuffers {
    int size = 0;          ///< bytes of one, as many as a frame has
    int count = 0;         ///< how many are queued
    int errorsAllowed = 0; ///< disturbed transfers in a row after which a read fails
};

/// One open connection to a dongle, bound to one of its pipes. Two of them make a link: one reads,
/// one writes. The calls must be made in the order in which they are declared here. The two share
/// the interface, the configuration, and whether these are set up.
///
/// Everything happens on the calling thread, and nothing keeps the processor busy while it waits.
class UsbEndpoint {
public:
    /// Stops and closes what is still open.
    virtual ~UsbEndpoint() = default;

    /// How many dongles there are. Quick, and touches no other device.
    virtual int enumerate(std::string_view deviceInterfaceClass) = 0;
    /// Opens one of the dongles that enumerate counted, from 0. Endpoints of one host share it;
    /// other programs are kept out. Once a dongle is Gone it stays so for those that have opened
    /// it; after it is plugged in again enumerate counts it as a new one.
    virtual UsbStatus open(int index) = 0;
    virtual UsbStatus addInterface(int number, int alternateSetting) = 0;
    virtual UsbStatus setConfiguration(int index) = 0;
    virtual UsbStatus bind(std::uint8_t endpointAddress) = 0;
    /// Clears a halt of the bound pipe.
    virtual UsbStatus resetPipe() = 0;
    virtual UsbStatus startReading(const UsbBuffers& buffers) = 0;
    virtual UsbStatus startWriting(const UsbBuffers& buffers) = 0;

    /// Sends a frame. May return before it is sent; a later read then reports its failure. Waits
    /// while all buffers are in use, a second at most.
    virtual UsbStatus write(const UsbFrame& frame) = 0;
    /// Takes the oldest frame received; waits for one at most `wait` nanoseconds, 0 for not at all.
    /// `frame` changes on success only. A stalled pipe is Failed and an empty packet NoFrame, at
    /// once.
    virtual UsbStatus read(UsbFrame& frame, std::int64_t wait) = 0;
    /// Resets the whole device to its state after plugging in. Pending frames are lost; reading and
    /// writing must be started again.
    virtual UsbStatus resetDevice() = 0;

    virtual UsbStatus stopReading() = 0;
    virtual UsbStatus stopWriting() = 0;
    virtual UsbStatus removeInterface() = 0;
    virtual UsbStatus leaveConfiguration() = 0;
    virtual void close() = 0;
};

/// Where dongles are plugged in. Outlives its endpoints.
class UsbHost {
public:
    virtual ~UsbHost() = default;
    virtual std::unique_ptr<UsbEndpoint> makeEndpoint() = 0;
};

} // namespace bitlux
