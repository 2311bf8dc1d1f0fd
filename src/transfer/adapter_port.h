#pragma once

#include "platform/adapter.h"
#include "platform/event.h"
#include "platform/parallel_port.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace bitlux {

/// The registers of a parallel port on the lines of an adapter. It collects the accesses of a word
/// and makes them in one exchange: each write is a byte for the lines, and a read of the status is
/// the sample of the lines before the next byte.
///
/// The adapter is opened by the first complete() that has something to write, and again by the next
/// one when it was lost. Lines of pins that are not in use are inputs.
class AdapterPort : public ParallelPort {
public:
    /// `host` outlives this.
    AdapterPort(AdapterHost& host, Adapter adapter);

    [[nodiscard]] const Adapter& adapter() const { return adapter_; }
    /// Whether it is open; false before something is written, and while it is lost.
    [[nodiscard]] bool isOpen() const { return link_ != nullptr; }
    /// It was opened, and clocks out so many bytes a second.
    Event<double> opened;

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    void EnablePorts(std::int16_t, std::int16_t) override {}
    void DisablePorts(std::int16_t, std::int16_t) override {}
    /// The port is at 0x378.
    std::int16_t GetLPTPortAddress(std::int16_t number) override;
    /// Raises Failure (PortUnusable); no access is repeated then.
    void complete() override;
    void takeSamples(std::span<std::int16_t> values) override;
    void drive(std::uint8_t dataPins, std::uint8_t controlPins) override;

private:
    void connectPins();
    [[nodiscard]] std::uint8_t level() const;
    void addLevel();
    void send();
    void open();
    void driveFrom(std::uint8_t level);
    void exchange();
    void storeStatus();

    AdapterHost& host_;
    Adapter adapter_;
    std::unique_ptr<AdapterLink> link_;

    // What a value of a register is on the lines, and the other way round.
    std::array<std::uint8_t, 256> linesOfData_{};
    std::array<std::uint8_t, 16> linesOfControl_{};
    std::array<std::uint8_t, 256> statusOfLines_{};
    bool hasControlLines_ = false;

    std::uint8_t data_ = 0;
    std::uint8_t control_ = 0;
    std::uint8_t outputs_ = 0;              ///< the lines that are to be driven
    std::uint8_t driven_ = 0;               ///< those that are
    std::optional<std::uint8_t> lastLevel_; ///< of the lines, as written last
    std::vector<std::uint8_t> bytes_;       ///< collected
    std::vector<std::uint8_t> samples_;
    std::vector<std::size_t> reads_;   ///< how many bytes were before each read
    std::vector<std::uint8_t> status_; ///< what the reads returned in the last complete()
};

} // namespace bitlux
