#include "bench/dongle_board.h"

#include "bench/dongle_word.h"
#include "platform/dongle_commands.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace bitlux {

namespace {

constexpr std::uint16_t topPin = 0x100; ///< the extra pin that has the same place in a frame
constexpr int byteBits = 8;

} // namespace

DongleBoard::DongleBoard(BenchClock& clock, std::shared_ptr<Device> device) : clock_(clock) {
    connect(std::move(device));
}

void DongleBoard::connect(std::shared_ptr<Device> device) {
    services_.clear(); // before the device that brought them
    device_ = std::move(device);
    chip_ = device_->chip();
    now_ = clock_.nanoseconds();
    if (chip_ != nullptr)
        chip_->timeIs(now_);
    services_ = device_->dongleServices();
}

void DongleBoard::powerDown() {
    services_ = device_->dongleServices();
}

void DongleBoard::setLines(bool interrupt, bool reset) {
    interrupt_ = interrupt;
    reset_ = reset;
}

std::int64_t DongleBoard::nextDue() const {
    std::int64_t due = DongleService::never;
    for (const auto& service : services_)
        due = std::min(due, service->due());
    return due;
}

void DongleBoard::catchUp() {
    const std::int64_t until = clock_.nanoseconds();
    CycleFinder finder;
    for (std::int64_t due = nextDue(); due <= until; due = nextDue()) {
        now_ = due;
        serve();
        skipCycles(finder, until);
    }
    now_ = until;
    if (chip_ != nullptr)
        chip_->timeIs(until);
}

void DongleBoard::serve() {
    if (chip_ != nullptr)
        chip_->timeIs(now_);
    for (const auto& service : services_)
        if (service->due() <= now_)
            service->serve(*this);
}

void DongleBoard::skipCycles(CycleFinder& finder, std::int64_t until) {
    if (chip_ == nullptr || nextDue() > until)
        return;
    Phase phase;
    chip_->addPhase(phase);
    for (const auto& service : services_)
        service->addPhase(phase, now_);
    const std::int64_t cycle = finder.take(now_, std::move(phase));
    if (cycle == 0)
        return;
    const std::int64_t left = (until - now_) / cycle * cycle;
    chip_->skip(left);
    for (const auto& service : services_)
        service->skip(left);
    finder = {};
}

UsbFrame DongleBoard::execute(const UsbFrame& frame) {
    const DongleFrame read(frame);
    if (read.length > 0 && read.changesPins)
        extraPins_ = read.extraPins;
    if ((frame[0] & dongle::triggerBit) != 0 && (extraPins_ & topPin) == 0)
        ++triggers_;
    if (read.length == 0 && !commandAnswers_.empty()) {
        const UsbFrame given = commandAnswers_.front();
        if (commandAnswers_.size() > 1)
            commandAnswers_.pop_front();
        return given;
    }
    for (const auto& service : services_)
        if (const auto answer = service->take(frame, *this))
            return *answer;
    return read.length == 0 ? command(frame) : word(frame);
}

/// A command that means nothing to it is answered all the same.
UsbFrame DongleBoard::command(const UsbFrame& frame) {
    UsbFrame answer{0, frame[1]};
    if (frame[1] == dongle::readLines)
        answer[3] = readLines();
    return answer;
}

std::uint8_t DongleBoard::readLines() const {
    const ChipLines lines = chip_ != nullptr ? chip_->lines() : ChipLines{};
    return static_cast<std::uint8_t>((interrupt_ || lines.interrupt ? 1 : 0) |
                                     (reset_ || lines.reset ? 0 : 2));
}

std::uint64_t DongleBoard::exchange(std::uint64_t word, int bits, int type) {
    const auto room = static_cast<int>(std::tuple_size_v<UsbFrame> - firstDataByte) * byteBits;
    BusShape shape = wiring_(type);
    shape.wordLength = bits;
    UsbFrame frame{};
    const std::uint64_t aligned = word << (room - bits);
    for (std::size_t i = firstDataByte; i < frame.size(); ++i)
        frame[i] = static_cast<std::uint8_t>(aligned >> (byteBits * (frame.size() - 1 - i)) & 0xFF);
    std::uint64_t answer = 0;
    const UsbFrame returned = clockWord(frame, shape, *device_);
    for (std::size_t i = firstDataByte; i < returned.size(); ++i)
        answer = answer << byteBits | returned[i];
    return answer >> (room - bits);
}

UsbFrame DongleBoard::word(const UsbFrame& frame) {
    const DongleFrame read(frame);
    BusShape shape = wiring_(read.type);
    shape.wordLength = read.length;
    shape.selectedWhenHigh = read.selectedWhenHigh;
    shape.dataInOneIsHigh = read.dataInOneIsHigh;
    shape.dataOutOneIsHigh = read.dataOutOneIsHigh;
    return clockWord(frame, shape, *device_);
}

std::vector<Reading> DongleBoard::readings() const {
    std::vector<Reading> all;
    for (const auto& service : services_)
        std::ranges::move(service->readings(), std::back_inserter(all));
    all.push_back({"Dongle", "Triggers", std::to_string(triggers_)});
    return all;
}

} // namespace bitlux
