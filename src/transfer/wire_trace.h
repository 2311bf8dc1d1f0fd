#pragma once

#include "platform/clock.h"
#include "platform/parallel_port.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux {

/// One access to a register of the port, as it happened.
struct WireAccess {
    enum class Kind : std::uint8_t { Write, Read };

    std::int64_t nanoseconds; ///< when the access was complete, on the clock of the recording
    Kind kind;
    std::int16_t address;
    std::uint8_t value;
};

/// What happened on the wire, in order. One record serves the waveform, the exports, the command
/// line and the tests.
class WireTrace {
public:
    void add(const WireAccess& access) {
        if (!started_) {
            started_ = true;
            origin_ = access.nanoseconds;
        }
        accesses_.push_back(access);
    }

    [[nodiscard]] const std::vector<WireAccess>& accesses() const { return accesses_; }

    /// As "1200 W 378 05": nanoseconds since the first access, write or read, address and byte in
    /// hexadecimal.
    [[nodiscard]] std::string line(const WireAccess& access) const;

    /// Forgets the accesses, but not when the first one was.
    void clear() { accesses_.clear(); }

private:
    std::vector<WireAccess> accesses_;
    std::int64_t origin_ = 0;
    bool started_ = false;
};

/// A port that records what passes through it.
class RecordingPort : public ParallelPort {
public:
    RecordingPort(ParallelPort& recorded, WireTrace& trace, const Clock& clock);

    [[nodiscard]] ParallelPort& recorded() const { return recorded_; }

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    void EnablePorts(std::int16_t first, std::int16_t last) override;
    void DisablePorts(std::int16_t first, std::int16_t last) override;
    std::int16_t GetLPTPortAddress(std::int16_t number) override;
    void SetFastMode(std::int32_t mode) override;

private:
    void record(WireAccess::Kind kind, std::int16_t address, std::int32_t value);

    ParallelPort& recorded_;
    WireTrace& trace_;
    const Clock& clock_;
};

} // namespace bitlux
