#pragma once

#include "bench/bench_clock.h"
#include "bench/scripted_desk.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace bitlux {

/// Where a call that lasts lets whoever made it act: the interpreter behind a script, a signal.
struct Interruption {
    /// Called often; may leave by an exception that is no std::exception, which ends the call.
    std::function<void()> check;
    /// Sleeps, and lets others run meanwhile.
    std::function<void(std::int64_t nanoseconds)> sleep;
};

/// Virtual time; whoever waits on it can be interrupted.
class InterruptibleVirtualClock : public VirtualClock {
public:
    explicit InterruptibleVirtualClock(const Interruption& interruption)
        : interruption_(interruption) {}
    void idle(std::int64_t duration) override;

private:
    const Interruption& interruption_;
};

/// The time of the world outside, likewise.
class InterruptibleRealClock : public PacedClock {
public:
    explicit InterruptibleRealClock(const Interruption& interruption)
        : interruption_(interruption) {}
    void idle(std::int64_t duration) override;

private:
    const Interruption& interruption_;
};

/// A scripted loop whose turns can be interrupted.
class InterruptibleLoop : public ScriptedLoop {
public:
    InterruptibleLoop(BenchClock& clock, const Interruption& interruption)
        : ScriptedLoop(clock), interruption_(interruption) {}
    void turn() override;

private:
    const Interruption& interruption_;
};

/// A host of dongles whose reads can be interrupted while they wait.
class InterruptibleUsbHost : public UsbHost {
public:
    InterruptibleUsbHost(UsbHost& host, const Clock& clock, const Interruption& interruption)
        : host_(host), clock_(clock), interruption_(interruption) {}
    std::unique_ptr<UsbEndpoint> makeEndpoint() override;

private:
    UsbHost& host_;
    const Clock& clock_;
    const Interruption& interruption_;
};

} // namespace bitlux
