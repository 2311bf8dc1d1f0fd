#pragma once

#include "bare_loop.h"
#include "bench/scripted_desk.h"
#include "bench/simulated_dongle.h"
#include "null_port.h"
#include "transfer/word_engine.h"

#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace bitlux::perf {

/// Engine and bare loop side by side on one null port, with a word of 32 bits.
struct EngineBench {
    static constexpr int length = 32;

    std::unique_ptr<ParallelPort> port = makeNullPort();
    Session session;
    ScriptedBoxes boxes;
    PinLayer pins{session, *port};
    VirtualClock clock;
    SimulatedDongle unplugged{clock, makeDevice("none")};
    LiveOptions options;
    DongleLink link{session, unplugged, clock, boxes};
    FailureBoxes failures{boxes};
    WordEngine engine{{.session = session,
                       .options = options,
                       .pins = pins,
                       .dongle = link,
                       .failures = failures}};
    BareLoop bare;
    std::string name;

    EngineBench(int type, bool msbFirst)
        : bare(*port, type, msbFirst, length),
          name(fmt::format("type {} {}", type, msbFirst ? "msb" : "lsb")) {
        session.ParallelPortReady = true;
        session.LPTPortAddress = address378;
        session.CSPin = 0;
        session.DIPin = 1;
        session.ClockPin = 2;
        session.DOPin = 5;
        session.SPIType = static_cast<std::int16_t>(type);
        session.MSBFirst = msbFirst ? ConstOn : ConstOff;
        session.SPIWordLength = length;
        constexpr std::uint32_t word = 0xDEADBEEF;
        for (unsigned i = 0; i < length; ++i)
            session.WordToSend.push_back(static_cast<std::int16_t>((word >> i) & 1U));
    }

    static std::vector<std::unique_ptr<EngineBench>> all() {
        std::vector<std::unique_ptr<EngineBench>> benches;
        for (int type = 1; type <= 8; ++type)
            for (const bool msbFirst : {true, false})
                benches.push_back(std::make_unique<EngineBench>(type, msbFirst));
        return benches;
    }
};

} // namespace bitlux::perf
