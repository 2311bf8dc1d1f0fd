#pragma once

#include "emulated_node.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace bitlux::test {

/// The offset of a register of a port, and a byte that arrived there.
using Written = std::pair<int, int>;

/// The registers of a parallel port. What the kernel leaves on the lines is not 0.
struct ParportRegisters {
    std::uint8_t data = 0x5C;
    std::uint8_t status = 0;
    std::uint8_t control = 0x0C;
    std::vector<Written> written{};
};

/// The node /dev/parportN with the kernel's user-space driver behind it, as far as programs can
/// tell: one exclusive holder, nothing without a claim.
class EmulatedParport : EmulatedNode {
public:
    EmulatedParport(const Testbed& testbed, int number);
    ~EmulatedParport() override { detach(); }
    using EmulatedNode::isHeld;

    /// Answers `request` with an error, `times` times from now on, after letting `passing` pass.
    struct Fault {
        unsigned long request;
        int error;
        int times = 1'000'000;
        int passing = 0;
    };
    void break_(const Fault& fault) {
        locked([&] { fault_ = fault; });
    }
    void repair() {
        locked([this] { fault_.reset(); });
    }
    /// The node goes, and requests go on succeeding, as when the kernel removes a port.
    void takeAway() const;
    void bringBack() const;

    /// Every request that came, in order.
    [[nodiscard]] std::vector<unsigned long> requests() {
        return locked([this] { return requests_; });
    }

    /// The registers; not to be touched while a request is under way.
    ParportRegisters wires;

private:
    int answer(UMockdevIoctlClient* client, unsigned long request) override;
    int claim(UMockdevIoctlClient* client);
    int access(UMockdevIoctlClient* client, unsigned long request);
    std::optional<int> injectedError(unsigned long request);

    std::optional<Fault> fault_;
};

} // namespace bitlux::test
