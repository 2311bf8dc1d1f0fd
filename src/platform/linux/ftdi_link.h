#pragma once

#include "platform/adapter.h"
#include "platform/linux/ftdi_connection.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace bitlux {

/// An adapter in use. Its chip puts a byte on its lines at each tick of its clock, and keeps how
/// they were just before.
class FtdiLink final : public AdapterLink {
public:
    /// What an answer may take beyond the bytes themselves.
    static constexpr std::chrono::nanoseconds standardTimeout = std::chrono::milliseconds(500);

    /// Takes a channel that is held. Raises Failure (PortUnusable).
    FtdiLink(const Adapter& adapter, std::unique_ptr<FtdiConnection> connection,
             const FtdiRate& rate, std::chrono::nanoseconds timeout);
    ~FtdiLink() override;
    FtdiLink(const FtdiLink&) = delete;
    FtdiLink& operator=(const FtdiLink&) = delete;

    void drive(std::uint8_t outputs) override;
    void exchange(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> samples) override;
    [[nodiscard]] double rate() const override { return rate_.bytes; }

private:
    void demandUsable() const;
    [[noreturn]] void fail(std::string text);
    [[noreturn]] void failRefused();
    [[noreturn]] void failExchange(UsbStatus status, std::size_t bytes);

    std::string name_;
    bool keepsLines_;
    FtdiRate rate_;
    std::chrono::nanoseconds timeout_;
    std::unique_ptr<FtdiConnection> connection_;
    std::optional<std::uint8_t> levels_; // written last
    std::string failure_;                // what has ended it
};

} // namespace bitlux
