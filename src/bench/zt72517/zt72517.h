#pragma once

#include "bench/chip.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace bitlux::zt72517 {

/// A chip on the dongle's byte-wide link: two lines that set its mode, a configuration byte, and
/// four rows of flags. It does not take part in words: its data output floats high.
///
/// Switches: the flags, in groups by their rows. Nothing clears a flag but its switch.
class Zt72517 : public Chip {
public:
    /// Sets both lines.
    void setLines(bool nstb, bool en);
    /// Receives a byte and answers it. A read command answers with its flags, in every mode. A byte
    /// of 32 to 63 is the new configuration, which it answers with, as it does to any other byte.
    std::uint8_t exchange(std::uint8_t byte);

    void inputsChanged(const DeviceInputs&, const BusShape&) override {}
    [[nodiscard]] bool dataOut() const override { return true; }
    DongleServices dongleServices() override;

    void timeIs(std::int64_t) override {} // nothing happens by itself
    void addPhase(Phase&) const override {}
    void skip(std::int64_t) override {}
    [[nodiscard]] ChipLines lines() const override { return {}; }

    [[nodiscard]] const std::vector<ChipSwitch>& switches() const override;
    [[nodiscard]] bool isOn(std::size_t index) const override { return on_.at(index); }
    void turn(std::size_t index, bool on) override { on_.at(index) = on; }
    [[nodiscard]] std::vector<Reading> readings() const override;

protected:
    Shifted wordBegins(const BusShape&) override { return {}; }
    void wordEnds(const Shifted&, const BusShape&) override {}

private:
    std::vector<bool> on_ = std::vector<bool>(switches().size());
    bool nstb_ = false;
    bool en_ = false;
    std::uint8_t configuration_ = 0;
    std::uint8_t byte_ = 0;
    std::uint8_t answer_ = 0;
};

} // namespace bitlux::zt72517
