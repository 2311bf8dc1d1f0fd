#include "transfer/adapter_port.h"

#include "platform/failure.h"
#include "transfer/extra_pins.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::size_t longestExchange = 4096;
/// Bytes of a word of 160 bits, and some more.
constexpr std::size_t usualBytes = 400;

/// The pins of the connector by the bits of a register; 0 for none.
constexpr std::array portDataPins{2, 3, 4, 5, 6, 7, 8, 9};
constexpr std::array portControlPins{1, 14, 16, 17};
constexpr std::array statusPins{0, 0, 0, 15, 13, 12, 10, 11};
// The hardware of a port inverts this one.
constexpr int invertedPin = 11;
constexpr std::uint8_t invertedStatus = 0x80;

std::int64_t paceOf(double rate) {
    constexpr double second = 1e9;
    return std::max<std::int64_t>(1, std::llround(second / rate));
}

bool hasBit(std::size_t value, std::size_t bit) {
    return ((value >> bit) & 1U) != 0;
}

std::uint8_t lineMask(const AdapterWiring& wiring, int pin) {
    const std::optional<int> line = wiring.lineOf(pin);
    return static_cast<std::uint8_t>(line ? 1U << static_cast<unsigned>(*line) : 0U);
}

} // namespace

AdapterPort::AdapterPort(AdapterHost& host, Adapter adapter)
    : ParallelPort(false, paceOf(adapter.clock)), host_(host), adapter_(std::move(adapter)) {
    bytes_.reserve(usualBytes);
    samples_.reserve(usualBytes);
    reads_.reserve(usualBytes);
    status_.reserve(usualBytes);
    connectPins();
}

void AdapterPort::connectPins() {
    for (std::size_t bit = 0; bit < portDataPins.size(); ++bit)
        for (std::size_t value = 0; value < linesOfData_.size(); ++value)
            if (hasBit(value, bit))
                linesOfData_[value] |= lineMask(adapter_.wiring, portDataPins[bit]);
    for (std::size_t bit = 0; bit < portControlPins.size(); ++bit) {
        const std::uint8_t line = lineMask(adapter_.wiring, portControlPins[bit]);
        hasControlLines_ = hasControlLines_ || line != 0;
        const bool high = controlBitLevel(static_cast<int>(bit), true) == ConstHigh;
        for (std::size_t value = 0; value < linesOfControl_.size(); ++value)
            if (hasBit(value, bit) == high)
                linesOfControl_[value] |= line;
    }
    for (std::size_t lines = 0; lines < statusOfLines_.size(); ++lines) {
        std::uint8_t status = 0;
        for (std::size_t bit = 0; bit < statusPins.size(); ++bit)
            if ((lines & lineMask(adapter_.wiring, statusPins[bit])) != 0)
                status |= static_cast<std::uint8_t>(1U << bit);
        statusOfLines_[lines] =
            adapter_.wiring.lineOf(invertedPin) ? status ^ invertedStatus : status;
    }
}

std::int32_t AdapterPort::Inp(std::int16_t address) {
    switch (address - address378) {
    case dataRegister:
        return data_;
    case controlRegister:
        return control_;
    case statusRegister:
        reads_.push_back(bytes_.size());
        return samplePlaceholder(reads_.size() - 1);
    default:
        return 0xFF;
    }
}

void AdapterPort::Outp(std::int16_t address, std::int16_t value) {
    switch (address - address378) {
    case dataRegister:
        data_ = static_cast<std::uint8_t>(value);
        addLevel();
        break;
    case controlRegister:
        control_ = static_cast<std::uint8_t>(value & 0x0F);
        if (hasControlLines_)
            addLevel();
        break;
    default:
        break;
    }
}

std::int16_t AdapterPort::GetLPTPortAddress(std::int16_t number) {
    return number == 1 ? address378 : std::int16_t{0};
}

std::uint8_t AdapterPort::level() const {
    return static_cast<std::uint8_t>(linesOfData_[data_] | linesOfControl_[control_]);
}

void AdapterPort::addLevel() {
    bytes_.push_back(level());
}

void AdapterPort::drive(std::uint8_t dataPinsUsed, std::uint8_t controlPinsUsed) {
    std::uint8_t lines = linesOfData_[dataPinsUsed];
    for (std::size_t bit = 0; bit < portControlPins.size(); ++bit)
        if (hasBit(controlPinsUsed, bit))
            lines |= lineMask(adapter_.wiring, portControlPins[bit]);
    outputs_ = lines;
}

void AdapterPort::complete() {
    // What is read after the last write takes a byte of its own, which changes no line.
    if (!reads_.empty() && reads_.back() == bytes_.size())
        addLevel();
    status_.clear();
    if (!bytes_.empty()) {
        try {
            send();
        } catch (...) {
            link_.reset();
            driven_ = 0;
            bytes_.clear();
            reads_.clear();
            throw;
        }
    }
    bytes_.clear();
    reads_.clear();
}

void AdapterPort::send() {
    if (!link_)
        open();
    if (driven_ != outputs_)
        driveFrom(lastLevel_.value_or(bytes_.front()));
    exchange();
    lastLevel_ = bytes_.back();
    storeStatus();
}

/// It may have been plugged in somewhere else since.
void AdapterPort::open() {
    const std::vector<Adapter> found = host_.find();
    const auto here = std::find_if(found.begin(), found.end(), [this](const Adapter& adapter) {
        return adapter.name() == adapter_.name();
    });
    if (here == found.end())
        throw Failure(Failure::Kind::PortUnusable,
                      fmt::format("The adapter {} is not plugged in. Plug it in, then try again.",
                                  adapter_.name()));
    link_ = host_.open(*here);
    setCollectedPace(paceOf(link_->rate()));
    opened.raise(link_->rate());
}

/// Makes the lines outputs that have a level already.
void AdapterPort::driveFrom(std::uint8_t level) {
    std::uint8_t before = 0;
    link_->exchange({&level, 1}, {&before, 1});
    link_->drive(outputs_);
    driven_ = outputs_;
}

void AdapterPort::exchange() {
    samples_.resize(bytes_.size());
    const std::span<const std::uint8_t> bytes(bytes_);
    const std::span<std::uint8_t> samples(samples_);
    for (std::size_t at = 0; at < bytes.size(); at += longestExchange) {
        const std::size_t count = std::min(longestExchange, bytes.size() - at);
        link_->exchange(bytes.subspan(at, count), samples.subspan(at, count));
    }
}

void AdapterPort::storeStatus() {
    for (const std::size_t bytesBefore : reads_)
        status_.push_back(statusOfLines_[samples_[bytesBefore]]);
}

void AdapterPort::takeSamples(std::span<std::int16_t> values) {
    for (std::int16_t& value : values) {
        if (value >= 0)
            continue;
        const std::size_t number = placeholderNumber(value);
        value = number < status_.size() ? std::int16_t{status_[number]} : std::int16_t{0};
    }
}

} // namespace bitlux
