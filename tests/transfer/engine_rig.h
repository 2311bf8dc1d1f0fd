#pragma once

#include "bench/scripted_desk.h"
#include "bench/simulated_dongle.h"
#include "platform/failure.h"
#include "support/rows.h"
#include "transfer/word_engine.h"

#include <functional>
#include <string>

#include <fmt/format.h>

namespace bitlux::test {

/// A port that records its accesses, and answers reads by a function of the number
/// of the read.
class LoggingPort : public ParallelPort {
public:
    LoggingPort() : ParallelPort(true) {}

    std::int32_t Inp(std::int16_t address) override {
        note(fmt::format("R{:X}", address));
        return answer(reads_++);
    }
    void Outp(std::int16_t address, std::int16_t value) override {
        if (++writes_ == failAtWrite)
            throw Failure(Failure::Kind::PortUnusable, "The port is gone");
        note(fmt::format("{}{:02X}", address == 0x378 ? "" : fmt::format("{:X}:", address), value));
    }
    void EnablePorts(std::int16_t first, std::int16_t last) override {
        note(fmt::format("enable({:X},{:X})", first, last));
    }
    void DisablePorts(std::int16_t first, std::int16_t last) override {
        note(fmt::format("disable({:X},{:X})", first, last));
    }
    std::int16_t GetLPTPortAddress(std::int16_t) override { return 0; }
    void complete() override {
        if (isTakenAway)
            throw Failure(Failure::Kind::PortUnusable, "The port is gone");
    }

    std::string log;
    std::function<std::int32_t(int)> answer = [](int) { return 0; };
    int failAtWrite = -1;
    bool isTakenAway = false;

private:
    void note(const std::string& access) { log += (log.empty() ? "" : " ") + access; }

    int reads_ = 0;
    int writes_ = 0;
};

/// The engine on a port of its own: chip select, data in and clock on bits 0, 1 and 2, chip
/// select low when asserted, data out on bit 5, everything idle.
struct EngineRig {
    Session session;
    LoggingPort port;
    ScriptedBoxes boxes;
    VirtualClock clock;
    SimulatedDongle unplugged{clock, makeDevice("none")};
    LiveOptions options;
    PinLayer pins{session, port};
    DongleLink link{session, unplugged, clock, boxes};
    FailureBoxes failures{boxes};
    WordEngine engine{{.session = session,
                       .options = options,
                       .pins = pins,
                       .dongle = link,
                       .failures = failures}};

    EngineRig(int type, Flag msbFirst, std::vector<std::int16_t> word) {
        session.ParallelPortReady = true;
        session.LPTPortAddress = 0x378;
        session.CSPin = 0;
        session.DIPin = 1;
        session.ClockPin = 2;
        session.DOPin = 5;
        session.SPIType = static_cast<std::int16_t>(type);
        session.MSBFirst = msbFirst;
        session.SPIWordLength = static_cast<std::int16_t>(word.size());
        session.WordToSend = std::move(word);
        pins.rest();
        port.log.clear();
    }

    std::string send() {
        engine.SendSPI();
        return port.log;
    }
};

} // namespace bitlux::test
