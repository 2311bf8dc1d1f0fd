#include "bench/zt72517/zt72517.h"

#include "bench/dongle_service.h"
#include "platform/dongle_commands.h"

#include <array>

#include <fmt/format.h>

namespace bitlux::zt72517 {

namespace {

struct Flag {
    const char* group;
    const char* name;
    std::uint8_t command; ///< the byte that reads it
    int bit;
};

constexpr std::array flags{Flag{"Flags 1", "CAN F", 0, 0},     Flag{"Flags 1", "VMONF", 0, 1},
                           Flag{"Flags 1", "CAN WU", 0, 2},    Flag{"Flags 1", "LxWU", 0, 3},
                           Flag{"Flags 1", "BATFAIL", 0, 4},   Flag{"Flags 2", "SPIerr", 31, 1},
                           Flag{"Flags 2", "Test/def", 31, 2}, Flag{"Flags 2", "WILS", 31, 3},
                           Flag{"Flags 3", "CANF0", 64, 0},    Flag{"Flags 3", "CANF1", 64, 1},
                           Flag{"Flags 3", "CANF2", 64, 2},    Flag{"Flags 3", "Tx-PD", 64, 3},
                           Flag{"Flags 3", "Rx-PR", 64, 4},    Flag{"Flags 3", "Bus Dom", 64, 5},
                           Flag{"Flags 4", "VDD Low", 95, 0},  Flag{"Flags 4", "VIO Low", 95, 1},
                           Flag{"Flags 4", "VSUV", 95, 2},     Flag{"Flags 4", "VSOV", 95, 3},
                           Flag{"Flags 4", "CAN cur", 95, 4},  Flag{"Flags 4", "VDD Temp", 95, 5}};

/// By NSTB in bit 0 and EN in bit 1.
constexpr std::array<const char*, 4> modes{"Standby", "Listen Only", "Go to Sleep", "Normal Mode"};

constexpr std::uint8_t configurationMask = 0xE0;
constexpr std::uint8_t configurationMark = 0x20;

/// Carries frames to the chip. A frame has the length of a word, so its command is checked too.
class PspiService : public DongleService {
public:
    explicit PspiService(Zt72517& chip) : chip_(chip) {}

    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus&) override {
        if ((frame[0] & 0x7F) != dongle::pspiLength || frame[1] != dongle::pspi)
            return std::nullopt;
        chip_.setLines((frame[2] & 1) != 0, (frame[2] & 2) != 0);
        UsbFrame answer = frame;
        // A change of the lines brings no byte, and nothing comes back.
        answer[3] = (frame[2] & dongle::pspiHasByte) != 0 ? chip_.exchange(frame[3]) : 0;
        return answer;
    }

private:
    Zt72517& chip_;
};

} // namespace

void Zt72517::setLines(bool nstb, bool en) {
    // The modes follow the lines at once: the duration of the entry to sleep is unknown.
    nstb_ = nstb;
    en_ = en;
}

std::uint8_t Zt72517::exchange(std::uint8_t byte) {
    byte_ = byte;
    if ((byte & configurationMask) == configurationMark)
        configuration_ = byte;
    answer_ = configuration_;
    bool reads = false;
    int bits = 0;
    for (std::size_t i = 0; i < flags.size(); ++i) {
        reads = reads || flags[i].command == byte;
        if (flags[i].command == byte && on_[i])
            bits |= 1 << flags[i].bit;
    }
    if (reads)
        answer_ = static_cast<std::uint8_t>(bits);
    return answer_;
}

DongleServices Zt72517::dongleServices() {
    DongleServices services;
    services.push_back(std::make_unique<PspiService>(*this));
    return services;
}

const std::vector<ChipSwitch>& Zt72517::switches() const {
    static const std::vector<ChipSwitch> all = [] {
        std::vector<ChipSwitch> made;
        for (const Flag& flag : flags)
            made.push_back({flag.group, flag.name});
        return made;
    }();
    return all;
}

std::vector<Reading> Zt72517::readings() const {
    const auto mode = static_cast<std::size_t>((nstb_ ? 1 : 0) | (en_ ? 2 : 0));
    return {{"State", "Mode", modes[mode]},
            {"State", "NSTB", nstb_ ? "1" : "0"},
            {"State", "EN", en_ ? "1" : "0"},
            {"State", "Configuration", fmt::format("{:02X}", configuration_)},
            {"State", "Last byte", fmt::format("{:02X}", byte_)},
            {"State", "Last answer", fmt::format("{:02X}", answer_)}};
}

} // namespace bitlux::zt72517
