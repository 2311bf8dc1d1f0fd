#include "transfer/wire_trace.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

std::string WireTrace::line(const WireAccess& access) const {
    if (access.kind == WireAccess::Kind::FrameOut || access.kind == WireAccess::Kind::FrameIn)
        return fmt::format("{} {} {:02X}", access.nanoseconds - origin_,
                           access.kind == WireAccess::Kind::FrameOut ? "OUT" : "IN",
                           fmt::join(access.frame, " "));
    return fmt::format("{} {} {:X} {:02X}", access.nanoseconds - origin_,
                       access.kind == WireAccess::Kind::Write ? 'W' : 'R',
                       static_cast<std::uint16_t>(access.address), access.value);
}

RecordingPort::RecordingPort(ParallelPort& recorded, WireListener& listener, const Clock& clock)
    : ParallelPort(recorded), recorded_(recorded), listener_(listener), clock_(clock) {}

std::int32_t RecordingPort::Inp(std::int16_t address) {
    const std::int32_t value = recorded_.Inp(address);
    record(WireAccess::Kind::Read, address, value);
    return value;
}

void RecordingPort::Outp(std::int16_t address, std::int16_t value) {
    recorded_.Outp(address, value);
    record(WireAccess::Kind::Write, address, value);
}

void RecordingPort::EnablePorts(std::int16_t first, std::int16_t last) {
    recorded_.EnablePorts(first, last);
}

void RecordingPort::DisablePorts(std::int16_t first, std::int16_t last) {
    recorded_.DisablePorts(first, last);
}

std::int16_t RecordingPort::GetLPTPortAddress(std::int16_t number) {
    return recorded_.GetLPTPortAddress(number);
}

void RecordingPort::SetFastMode(std::int32_t mode) {
    ParallelPort::SetFastMode(mode);
    recorded_.SetFastMode(mode);
}

void RecordingPort::complete() {
    if (collected_.empty()) {
        recorded_.complete();
        return;
    }
    const std::int64_t begin = clock_.nanoseconds();
    try {
        recorded_.complete();
    } catch (...) { // nobody knows how many of them were made
        collected_.clear();
        throw;
    }
    reportCollected(begin);
}

void RecordingPort::drive(std::uint8_t dataPins, std::uint8_t controlPins) {
    recorded_.drive(dataPins, controlPins);
}

void RecordingPort::record(WireAccess::Kind kind, std::int16_t address, std::int32_t value) {
    const WireAccess access{.nanoseconds = clock_.nanoseconds(),
                            .kind = kind,
                            .address = address,
                            .value = static_cast<std::uint8_t>(value)};
    if (recorded_.collects())
        collected_.push_back({access, static_cast<std::int16_t>(value)});
    else
        listener_.add(access);
}

/// Writes follow each other at the pace of the port. A read comes just before the next write.
void RecordingPort::reportCollected(std::int64_t begin) {
    std::int64_t next = begin;
    for (Collected& collected : collected_) {
        WireAccess& access = collected.access;
        if (access.kind == WireAccess::Kind::Read) {
            recorded_.takeSamples({&collected.value, 1});
            access.value = static_cast<std::uint8_t>(collected.value);
            access.nanoseconds = std::max(begin, next - 1);
        } else {
            access.nanoseconds = next;
            next += recorded_.collectedPace();
        }
        listener_.add(access);
    }
    collected_.clear();
}

} // namespace bitlux
