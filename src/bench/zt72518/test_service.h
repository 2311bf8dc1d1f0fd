#pragma once

#include "bench/dongle_service.h"
#include "bench/zt72518/state.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bitlux::zt72518 {

/// The factory state of a chip: whether it accepts test commands, and its trimming.
struct TestMode {
    bool on = false;
    std::string trimming = "none";
};

/// Commands of the dongle for test mode and trimming.
class TestService : public DongleService {
public:
    /// Both outlive this.
    TestService(TestMode& mode, const State& state) : mode_(mode), state_(state) {}

    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) override;

private:
    /// Sends a pair of test words, and holds the transmit input low.
    void trim(const UsbFrame& frame, DongleBus& bus);

    TestMode& mode_;
    const State& state_;
};

} // namespace bitlux::zt72518
