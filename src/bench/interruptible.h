#pragma once

#include "bench/bench_clock.h"
#include "bench/scripted_desk.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace bitlux {

/// Lets the caller of a long call interrupt it: the interpreter of a script, a signal.
struct Interruption {
    /// Called often; may throw an exception that is not a std::exception, which ends the call.
    std::function<void()> check;
    /// Sleeps, and lets other threads run meanwhile.
    std::function<void(std::int64_t nanoseconds)> sleep;
};

/// Virtual time; waits on it can be interrupted.
class InterruptibleVirtualClock : public VirtualClock {
public:
    explicit InterruptibleVirtualClock(const Interruption& interruption)
        : interruption_(interruption) {}
    void idle(std::int64_t duration) override;

private:
    const Interruption& interruption_;
};

/// The same for real time.
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
