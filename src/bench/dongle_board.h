#pragma once

#include "bench/bench_clock.h"
#include "bench/bus_shape.h"
#include "bench/chip.h"
#include "bench/dongle_service.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace bitlux {

/// The board of the simulated dongle: executes frames on the connected device. It handles words,
/// the chip's reset and interrupt lines, extra pins and the trigger; all other commands are
/// services that the device provides.
class DongleBoard : private DongleBus {
public:
    /// `clock` outlives this.
    DongleBoard(BenchClock& clock, std::shared_ptr<Device> device);

    void setWiring(std::function<BusShape(int type)> wiring) { wiring_ = std::move(wiring); }
    void connect(std::shared_ptr<Device> device);
    /// The device on the lines when it is a chip, else null.
    [[nodiscard]] Chip* chip() const { return chip_; }

    void powerUp() { extraPins_ = 0; }
    /// Stops its periodic actions.
    void powerDown();

    /// Catches up with everything due by now, in its services and in the chip. While they only
    /// repeat, whole cycles are skipped.
    void catchUp();
    /// Executes a frame and returns the answer.
    UsbFrame execute(const UsbFrame& frame);

    void answerCommandsWith(std::vector<UsbFrame> answers) {
        commandAnswers_.assign(answers.begin(), answers.end());
    }
    void setLines(bool interrupt, bool reset);
    [[nodiscard]] std::uint16_t extraPins() const { return extraPins_; }
    [[nodiscard]] int triggers() const { return triggers_; }
    [[nodiscard]] std::vector<Reading> readings() const;

private:
    std::uint64_t exchange(std::uint64_t word, int bits, int type) override;
    [[nodiscard]] std::int64_t now() const override { return now_; }

    [[nodiscard]] std::int64_t nextDue() const;
    void serve();
    /// Skips the whole cycles before `until`.
    void skipCycles(CycleFinder& finder, std::int64_t until);
    UsbFrame command(const UsbFrame& frame);
    UsbFrame word(const UsbFrame& frame);
    [[nodiscard]] std::uint8_t readLines() const;

    BenchClock& clock_;
    std::shared_ptr<Device> device_;
    Chip* chip_ = nullptr; ///< the device, when it is one
    DongleServices services_;
    std::function<BusShape(int)> wiring_ = [](int) { return BusShape{}; };
    std::int64_t now_ = 0;
    std::deque<UsbFrame> commandAnswers_;
    bool interrupt_ = false;
    bool reset_ = false;
    std::uint16_t extraPins_ = 0;
    int triggers_ = 0;
};

} // namespace bitlux
