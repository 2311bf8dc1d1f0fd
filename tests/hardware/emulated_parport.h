#pragma once

#include "testbed.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
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
class EmulatedParport {
public:
    EmulatedParport(const Testbed& testbed, int number);
    ~EmulatedParport();
    EmulatedParport(const EmulatedParport&) = delete;
    EmulatedParport& operator=(const EmulatedParport&) = delete;

    /// Answers `request` with an error, `times` times from now on, after letting `passing` pass.
    struct Fault {
        unsigned long request;
        int error;
        int times = 1'000'000;
        int passing = 0;
    };
    void break_(const Fault& fault);
    void repair();
    /// The node goes, and requests go on succeeding, as when the kernel removes a port.
    void takeAway() const;
    void bringBack() const;

    [[nodiscard]] bool isHeld();
    /// Every request that came, in order.
    [[nodiscard]] std::vector<unsigned long> requests();

    /// The registers; not to be touched while a request is under way.
    ParportRegisters wires;

private:
    static gboolean onRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self);
    static void onVanished(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self);
    int answer(UMockdevIoctlClient* client);
    int claim(UMockdevIoctlClient* client);
    int access(UMockdevIoctlClient* client, unsigned long request);
    std::optional<int> injectedError(unsigned long request);
    [[nodiscard]] std::string file() const; ///< of the node, in the test bed

    UMockdevTestbed* testbed_;
    std::string node_;
    UMockdevIoctlBase* driver_;
    std::mutex mutex_; // requests arrive on a thread of the test bed
    UMockdevIoctlClient* holder_ = nullptr;
    std::optional<Fault> fault_;
    std::vector<unsigned long> requests_;
};

} // namespace bitlux::test
