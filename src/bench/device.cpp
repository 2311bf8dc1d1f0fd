#include "bench/device.h"

#include "bench/chip.h"
#include "bench/model/chip_model.h"
#include "bench/zt72517/zt72517.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/forms/near_names.h"

#include <array>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

class StuckDevice : public Device {
public:
    explicit StuckDevice(bool level) : level_(level) {}
    void inputsChanged(const DeviceInputs&, const BusShape&) override {}
    [[nodiscard]] bool dataOut() const override { return level_; }

private:
    bool level_;
};

class LoopbackDevice : public Device {
public:
    void inputsChanged(const DeviceInputs& inputs, const BusShape&) override {
        level_ = inputs.dataIn;
    }
    [[nodiscard]] bool dataOut() const override { return level_; }

private:
    bool level_ = false;
};

class EchoDevice : public ShiftDevice {
protected:
    Shifted wordBegins(const BusShape&) override { return previous_; }
    void wordEnds(const Shifted& received, const BusShape&) override { previous_ = received; }

private:
    Shifted previous_;
};

/// Holds each bit until it has been sampled, so that a reply arrives as it was given whatever the
/// clocking type.
class ScriptedDevice : public Device {
public:
    explicit ScriptedDevice(std::vector<Reply> replies) : replies_(std::move(replies)) {}

    void inputsChanged(const DeviceInputs& inputs, const BusShape& shape) override {
        const bool selected = inputs.chipSelect == shape.selectedWhenHigh;
        if (selected && !selected_) {
            shape_ = shape;
            position_ = 0;
        } else if (!selected && selected_ && position_ > 0 && reply_ + 1 < replies_.size()) {
            ++reply_;
        }
        selected_ = selected;
    }

    [[nodiscard]] bool dataOut() const override {
        const int bit = shape_.msbFirst ? shape_.wordLength - 1 - position_ : position_;
        const Reply* reply = reply_ < replies_.size() ? &replies_[reply_] : nullptr;
        const auto index = static_cast<std::size_t>(bit);
        const bool one = reply != nullptr && bit >= 0 && index < reply->size() && (*reply)[index];
        return one == shape_.dataOutOneIsHigh;
    }

    void sampled() override { ++position_; }

private:
    std::vector<Reply> replies_;
    std::size_t reply_ = 0;
    BusShape shape_;
    int position_ = 0;
    bool selected_ = false;
};

struct DeviceRow {
    const char* name;
    const char* description; ///< a line for the user
    std::unique_ptr<Device> (*make)(const std::vector<Reply>& replies);
};

constexpr std::array deviceRows{
    DeviceRow{"none", "nothing is connected, the data output floats high",
              [](const std::vector<Reply>&) -> std::unique_ptr<Device> {
                  return std::make_unique<StuckDevice>(true);
              }},
    DeviceRow{"loopback", "the data output follows data in",
              [](const std::vector<Reply>&) -> std::unique_ptr<Device> {
                  return std::make_unique<LoopbackDevice>();
              }},
    DeviceRow{"echo", "answers with the previous word",
              [](const std::vector<Reply>&) -> std::unique_ptr<Device> {
                  return std::make_unique<EchoDevice>();
              }},
    DeviceRow{"stuck-high", "the data output stays high",
              [](const std::vector<Reply>&) -> std::unique_ptr<Device> {
                  return std::make_unique<StuckDevice>(true);
              }},
    DeviceRow{"stuck-low", "the data output stays low",
              [](const std::vector<Reply>&) -> std::unique_ptr<Device> {
                  return std::make_unique<StuckDevice>(false);
              }},
    DeviceRow{"scripted", "answers with the words of --replies, the last of them again and again",
              [](const std::vector<Reply>& replies) -> std::unique_ptr<Device> {
                  return std::make_unique<ScriptedDevice>(replies);
              }},
    DeviceRow{"zt72517", "CAN chip on the dongle's byte-wide link: lines, configuration, flags",
              [](const std::vector<Reply>&) -> std::unique_ptr<Device> {
                  return std::make_unique<zt72517::Zt72517>();
              }},
};

} // namespace

Reply replyFromHex(std::string_view text) {
    Reply bits;
    for (std::size_t n = 0; n < text.size(); ++n) {
        const int digit = hexDigit(text[text.size() - 1 - n]);
        if (digit < 0)
            break;
        for (int k = 0; k < 4; ++k)
            bits.push_back(((digit >> k) & 1) != 0);
    }
    if (text.empty() || bits.size() != 4 * text.size())
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("\"{}\" is not a valid hex number", text));
    return bits;
}

std::unique_ptr<Device> makeDevice(std::string_view name, const std::vector<Reply>& replies,
                                   const ChipSource& chips) {
    for (const DeviceRow& row : deviceRows)
        if (row.name == name)
            return row.make(replies);
    if (chips::ChipPtr chip = chips.chipOf(name))
        return makeChipModel(std::move(chip), name);
    const std::vector<std::string> near = forms::nearNames(name, deviceNames(chips));
    const std::string text = fmt::format("There is no device \"{}\"", name);
    throw Failure(Failure::Kind::OutOfRange,
                  near.empty() ? text
                               : fmt::format("{}. Did you mean {}?", text, fmt::join(near, ", ")));
}

std::string deviceDescription(std::string_view name, const ChipSource& chips) {
    for (const DeviceRow& row : deviceRows)
        if (row.name == name)
            return row.description;
    for (const ChipSource::Entry& entry : chips.entries())
        if (entry.device == name)
            return entry.description;
    return {};
}

std::vector<std::string> deviceNames(const ChipSource& chips) {
    std::vector<std::string> names;
    for (const DeviceRow& row : deviceRows)
        names.emplace_back(row.name);
    for (ChipSource::Entry& entry : chips.entries())
        names.push_back(std::move(entry.device));
    return names;
}

} // namespace bitlux
