#pragma once

#include "platform/parallel_port.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace bitlux {

/// One of the parallel ports LPT1 to LPT3 of a machine, by its number or by its base address.
struct PortChoice {
    std::int16_t number = 0;   ///< 1 to 3, 0 for by its address
    std::uint16_t address = 0; ///< where the number is 0
};

/// From "lpt1" to "lpt3" in either case, or an address such as "0x378" or "888"; raises Failure
/// (Conversion) for any other text.
PortChoice portChoiceFrom(std::string_view text);

/// The ports of a machine as if it had only the one that was chosen: no other is listed, and an
/// access to another one raises Failure (PortUnusable).
class ChosenPort : public ParallelPort {
public:
    /// The machine's port outlives this.
    ChosenPort(ParallelPort& machine, PortChoice choice);

    /// Raises Failure (PortUnusable), naming the existing ports, when the chosen one does not
    /// exist.
    void demand() const;

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    void EnablePorts(std::int16_t first, std::int16_t last) override;
    void DisablePorts(std::int16_t first, std::int16_t last) override;
    std::int16_t GetLPTPortAddress(std::int16_t number) override;
    void SetFastMode(std::int32_t mode) override;
    void complete() override { machine_.complete(); }

private:
    [[nodiscard]] bool isChosen(std::int16_t number, std::int16_t address) const;
    [[nodiscard]] std::string name() const;
    void demandOwn(std::int16_t address);

    ParallelPort& machine_;
    PortChoice choice_;
    std::uint16_t base_ = 0; ///< 0 before it was looked up
};

} // namespace bitlux
