#pragma once

#include "platform/clock.h"
#include "platform/event.h"
#include "platform/parallel_port.h"
#include "session/session.h"
#include "transfer/extra_pins.h"
#include "transfer/wire_trace.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace bitlux {

/// Bit number inside its register of a pin of the 25-pin connector, given as text; 0 for a text
/// that is none of "1" to "17". Pin 7 as a choice for the data output reads the bit of pin 12.
std::int16_t ConvertPin(std::string_view pin);

/// Writes the shadow registers to the port. The caller sets levels in Session::DataPortPins or
/// ControlPortPins and calls a Toggle; no pin changes before.
class PinLayer {
public:
    PinLayer(Session& session, ParallelPort& port)
        : session_(session), machinePort_(port), port_(&port) {}
    PinLayer(const PinLayer&) = delete;
    PinLayer& operator=(const PinLayer&) = delete;

    void ToggleDataPort();
    void ToggleControlPort();

    /// A register was written by one of these, not by a word.
    Event<PinRegister> written;

    /// Lets a port that can leave pins undriven drive those that the settings use.
    void driveUsedPins();
    /// Puts chip select, data in and clock to their idle levels, the clock to that of the type.
    void rest();

    /// The port in use, or the one that records what happens on it.
    [[nodiscard]] ParallelPort& port() { return *port_; }
    /// The parallel ports of the machine, whichever port is in use.
    [[nodiscard]] ParallelPort& machinePort() { return machinePort_; }
    /// From now on everything goes through `port`, which outlives its use.
    void use(ParallelPort& port);

    /// Reports every access from now on; costs nothing while off. The listener outlives the
    /// recording.
    void startRecording(WireListener& listener, const Clock& clock);
    void stopRecording();

    /// One write of a register, bracketed by direct access in fast mode. The system and the mode
    /// are read again before and after.
    static void write(ParallelPort& port, std::int16_t address, std::uint8_t value) {
        if (needsDirectAccess(port)) [[unlikely]]
            port.EnablePorts(address, address);
        port.Outp(address, value);
        if (needsDirectAccess(port)) [[unlikely]]
            port.DisablePorts(address, address);
    }

    static bool needsDirectAccess(const ParallelPort& port) {
        return port.GetFastMode() == 1 && port.IsWinNT();
    }

private:
    struct Listener {
        WireListener& listener;
        const Clock& clock;
    };

    Session& session_;
    ParallelPort& machinePort_;
    ParallelPort* port_;
    std::optional<RecordingPort> recording_;
    std::optional<Listener> listener_; ///< of the recording
};

} // namespace bitlux
