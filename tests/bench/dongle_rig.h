#pragma once

#include "bench/simulated_dongle.h"
#include "chip_script.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

namespace bitlux::test {

inline constexpr std::int64_t millisecond = 1'000'000;

/// A chip behind the dongle, driven with frames; its words have whole bytes. More steps:
///   <0004>=0004   a frame to the dongle and its answer, which may be left out
///   lines=2       as the dongle samples them: 1 is an interrupt, 2 is no reset
///   @2.5          comes to so many milliseconds after the last word; @2.5- and @2.5+ are a
///                 nanosecond before and after that
class DongleRig : public ChipScript {
public:
    DongleRig(const std::string& device, int bits, int type)
        : DongleRig(makeDevice(device), bits, type) {}
    DongleRig(std::shared_ptr<Device> device, int bits, int type)
        : device_(std::move(device)), bits_(bits), type_(type) {
        dongle.setWiring([](int wired) {
            return BusShape{.validOnRising = wired == 1, .toggledOnRising = wired == 2};
        });
        dongle.plug();
        for (UsbEndpoint* endpoint : {in_.get(), out_.get()})
            endpoint->open(0);
        in_->bind(0x81);
        in_->startReading({});
        out_->bind(0x02);
        out_->startWriting({});
    }

    UsbFrame exchange(const UsbFrame& frame) {
        EXPECT_EQ(out_->write(frame), UsbStatus::Success);
        UsbFrame answer{};
        EXPECT_EQ(in_->read(answer, 1000 * millisecond), UsbStatus::Success);
        return answer;
    }
    std::uint64_t send(std::uint64_t word) override {
        sentAt = clock.nanoseconds();
        UsbFrame frame{static_cast<std::uint8_t>(bits_), static_cast<std::uint8_t>(0x2F + type_)};
        const std::size_t bytes = static_cast<std::size_t>(bits_) / 8;
        for (std::size_t byte = 0; byte < bytes; ++byte)
            frame.at(3 + byte) = static_cast<std::uint8_t>(word >> 8 * (bytes - 1 - byte));
        const UsbFrame answer = exchange(frame);
        std::uint64_t reply = 0;
        for (std::size_t byte = 0; byte < bytes; ++byte)
            reply = reply << 8 | answer.at(3 + byte);
        return reply;
    }
    Chip& present() override {
        dongle.catchUp();
        return chip();
    }
    /// Lets the bench come to a time of its clock.
    void at(std::int64_t time) { clock.idle(time - clock.nanoseconds()); }
    Chip& chip() { return *device_->chip(); }
    VirtualClock clock;

protected:
    void take(const std::string& step) override {
        if (step[0] == '<')
            return command(step);
        if (step[0] == '@')
            return at(sentAt + std::llround(std::stod(step.substr(1)) * millisecond) +
                      (step.back() == '+' ? 1 : 0) - (step.back() == '-' ? 1 : 0));
        if (step.starts_with("lines=")) {
            EXPECT_EQ(exchange({0, 5})[3], number(step, 6));
            return;
        }
        ChipScript::take(step);
    }

private:
    static UsbFrame frameOf(const std::string& digits) {
        UsbFrame frame{};
        for (std::size_t byte = 0; 2 * byte < digits.size(); ++byte)
            frame.at(byte) = static_cast<std::uint8_t>(number(digits.substr(2 * byte, 2)));
        return frame;
    }
    void command(const std::string& step) {
        const std::size_t end = step.find('>');
        const UsbFrame answer = exchange(frameOf(step.substr(1, end - 1)));
        if (end + 1 < step.size()) {
            EXPECT_EQ(answer, frameOf(step.substr(end + 2)));
        }
    }

    std::shared_ptr<Device> device_;
    int bits_;
    int type_;

public:
    SimulatedDongle dongle{clock, device_};
    std::int64_t sentAt = 0;

private:
    std::unique_ptr<UsbEndpoint> in_ = dongle.makeEndpoint();
    std::unique_ptr<UsbEndpoint> out_ = dongle.makeEndpoint();
};

} // namespace bitlux::test
