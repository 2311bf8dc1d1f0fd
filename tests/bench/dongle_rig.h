#pragma once

#include "bench/simulated_dongle.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {

inline constexpr std::int64_t millisecond = 1'000'000;

/// A chip behind the dongle, worked with frames; its words have whole bytes.
class DongleRig {
public:
    DongleRig(const std::string& device, int bits, int type)
        : device_(makeDevice(device)), bits_(bits), type_(type) {
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
    /// Sends a word and returns the reply.
    unsigned send(unsigned word) {
        sentAt = clock.nanoseconds();
        UsbFrame frame{static_cast<std::uint8_t>(bits_), static_cast<std::uint8_t>(0x2F + type_)};
        const std::size_t bytes = static_cast<std::size_t>(bits_) / 8;
        for (std::size_t byte = 0; byte < bytes; ++byte)
            frame.at(3 + byte) = static_cast<std::uint8_t>(word >> 8 * (bytes - 1 - byte));
        const UsbFrame answer = exchange(frame);
        unsigned reply = 0;
        for (std::size_t byte = 0; byte < bytes; ++byte)
            reply = reply << 8 | answer.at(3 + byte);
        return reply;
    }
    /// Sends words and compares the replies.
    void expect(const std::vector<std::pair<unsigned, unsigned>>& exchanges) {
        for (const auto& [word, reply] : exchanges)
            EXPECT_EQ(send(word), reply) << fmt::format("{:X}", word);
    }
    /// As the dongle samples them: 1 is an interrupt, 2 is no reset.
    unsigned lines() { return exchange({0, 5})[3]; }
    /// Lets the bench come to a time after the last word was sent.
    void goTo(std::int64_t afterLastWord) {
        clock.idle(sentAt + afterLastWord - clock.nanoseconds());
    }
    /// Lets the bench come to a time of its clock.
    void at(std::int64_t time) { clock.idle(time - clock.nanoseconds()); }
    void turn(const std::string& name, bool on = true) {
        dongle.catchUp();
        chip().turn(switchNamed(chip(), name), on);
    }
    std::string reading(const std::string& name) {
        dongle.catchUp();
        for (const Reading& one : chip().readings())
            if (one.name == name)
                return one.value;
        return "no such reading";
    }
    Chip& chip() { return *device_->chip(); }
    VirtualClock clock;

private:
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
