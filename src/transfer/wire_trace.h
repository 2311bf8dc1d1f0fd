#pragma once

#include "platform/clock.h"
#include "platform/parallel_port.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux {

/// One access to a register of the port, or one frame of the dongle, in the order of time.
struct WireAccess {
    enum class Kind : std::uint8_t { Write, Read, FrameOut, FrameIn };

    std::int64_t nanoseconds; ///< on the clock of the recording: when an access was complete, when
                              ///< a frame was submitted
    Kind kind;
    std::int16_t address = 0; ///< of an access
    std::uint8_t value = 0;   ///< of an access
    UsbFrame frame{};
};

/// Callback for everything on the wire, immediate and in order.
class WireListener {
public:
    virtual ~WireListener() = default;
    virtual void add(const WireAccess& access) = 0;
};

/// All that happened on the wire, in order, for the command line and the tests. It grows with every
/// access.
class WireTrace : public WireListener {
public:
    void add(const WireAccess& access) override {
        if (!started_) {
            started_ = true;
            origin_ = access.nanoseconds;
        }
        accesses_.push_back(access);
    }

    [[nodiscard]] const std::vector<WireAccess>& accesses() const { return accesses_; }

    /// As "1200 W 378 05": nanoseconds since the first entry, write or read, address and byte in
    /// hexadecimal; or as "1200 OUT 10 70 00 A5 C3 00 00 00".
    [[nodiscard]] std::string line(const WireAccess& access) const;

    /// Discards the accesses, but keeps the time of the first.
    void clear() { accesses_.clear(); }

private:
    std::vector<WireAccess> accesses_;
    std::int64_t origin_ = 0;
    bool started_ = false;
};

/// A port that reports every access to another port; those that it collects when they were made.
class RecordingPort : public ParallelPort {
public:
    RecordingPort(ParallelPort& recorded, WireListener& listener, const Clock& clock);

    [[nodiscard]] ParallelPort& recorded() const { return recorded_; }

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    void EnablePorts(std::int16_t first, std::int16_t last) override;
    void DisablePorts(std::int16_t first, std::int16_t last) override;
    std::int16_t GetLPTPortAddress(std::int16_t number) override;
    void SetFastMode(std::int32_t mode) override;
    void complete() override;
    void takeSamples(std::span<std::int16_t> values) override { recorded_.takeSamples(values); }
    void drive(std::uint8_t dataPins, std::uint8_t controlPins) override;

private:
    void record(WireAccess::Kind kind, std::int16_t address, std::int32_t value);
    void reportCollected(std::int64_t begin);

    struct Collected {
        WireAccess access;
        std::int16_t value; ///< a placeholder or a value
    };

    ParallelPort& recorded_;
    WireListener& listener_;
    const Clock& clock_;
    std::vector<Collected> collected_;
};

} // namespace bitlux
