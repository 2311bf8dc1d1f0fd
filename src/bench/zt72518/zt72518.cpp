#include "bench/zt72518/zt72518.h"

#include "bench/zt72518/mode_machine.h"
#include "bench/zt72518/state.h"
#include "bench/zt72518/test_service.h"
#include "bench/zt72518/watchdog_service.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr int operationShift = 14;
constexpr unsigned writeOperation = 1;
constexpr unsigned generalFlagsOperation = 2;
constexpr std::uint64_t markBit = 0x100; ///< parity of a write, the read bit of a read
constexpr std::uint64_t lowByte = 0xFF;

constexpr std::uint64_t operationOf(std::uint64_t word) {
    return word >> operationShift;
}

class Part : public ModelPart {
public:
    explicit Part(ModelStore& store);

    void timeIs(std::int64_t now) override { machine_.timeIs(now); }
    [[nodiscard]] ChipLines lines() const override;
    void addPhase(Phase& phase) const override;
    void skip(std::int64_t duration) override { machine_.skip(duration); }
    DongleServices dongleServices() override;

    [[nodiscard]] bool listens() const override { return machine_.answers(); }
    [[nodiscard]] std::uint64_t understood(std::uint64_t word) const override {
        return operationOf(word) == writeOperation ? word & ~markBit : word;
    }
    bool accepts(const Request& request) override;
    std::optional<std::uint64_t> written(const chips::Register& owner,
                                         std::uint64_t value) override;
    void wasRead(const chips::View& view) override;
    void hadWrongLength() override { state_.set(spiError); }

    [[nodiscard]] std::optional<std::uint64_t> status() const override;
    [[nodiscard]] std::optional<std::uint64_t> shown(const chips::View& view) const override;
    [[nodiscard]] std::uint64_t answer(std::uint64_t word, std::uint64_t answer) const override;

    void addSwitches(SwitchTable& table) override;
    void turned(const StateBit& bit) override;
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    /// A view that shows the state of the chip.
    struct MadeView {
        const chips::View* view;
        std::uint8_t (Part::*value)() const;
    };

    [[nodiscard]] std::uint8_t specialMode() const;
    [[nodiscard]] std::uint8_t watchdogRandom() const { return random_.watchdog(); }
    [[nodiscard]] std::uint8_t mode() const;
    [[nodiscard]] std::uint8_t modeFlags() const;
    [[nodiscard]] std::uint8_t canState() const;
    [[nodiscard]] std::uint8_t inputOutputState() const;
    [[nodiscard]] std::uint8_t lin1State() const { return state_.value(Register::Lin1) & 0xC0; }
    [[nodiscard]] std::uint8_t lin2State() const { return state_.value(Register::Lin2) & 0xC0; }
    [[nodiscard]] bool anyLit(std::initializer_list<Row> rows) const;

    State state_;
    RandomWords random_;
    ModeMachine machine_{state_, random_};
    TestMode test_;
    const chips::Register& special_;
    const chips::Register& refresh_;
    const chips::Register& mode_;
    const chips::Register& interrupts_;
    const chips::View& leaveDebug_;
    const chips::View& readMode_;
    std::array<MadeView, 10> made_;
};

Part::Part(ModelStore& store)
    : state_(store),
      special_(store.owner("Special Mode")),
      refresh_(store.owner("Watchdog Refresh")),
      mode_(store.owner("Mode")),
      interrupts_(store.owner("Interrupts")),
      leaveDebug_(store.view("Mode", "Leave DBG")),
      readMode_(store.view("Mode", "Read Low")),
      made_{{{&store.view("Special Mode", "Read Low"), &Part::specialMode},
             {&store.view("Watchdog Refresh", "Read Low"), &Part::watchdogRandom},
             {&readMode_, &Part::mode},
             {&store.view("Mode", "Read High"), &Part::mode},
             {&leaveDebug_, &Part::modeFlags},
             {&store.view("Mode", "Mode"), &Part::modeFlags},
             {&store.view("CAN", "Read High"), &Part::canState},
             {&store.view("I/O", "Read High"), &Part::inputOutputState},
             {&store.view("LIN 1", "Read High"), &Part::lin1State},
             {&store.view("LIN 2", "Read High"), &Part::lin2State}}} {}

// Beside the bus

ChipLines Part::lines() const {
    return {.interrupt = state_.has(pinInterrupt) || state_.lit(SafeInterrupt),
            .reset = state_.has(pinReset) || machine_.mode() == ModeMachine::Mode::Reset};
}

void Part::addPhase(Phase& phase) const {
    machine_.addPhase(phase);
    state_.addPhase(phase);
}

DongleServices Part::dongleServices() {
    DongleServices services;
    services.push_back(std::make_unique<WatchdogService>(machine_));
    services.push_back(std::make_unique<TestService>(test_, state_));
    return services;
}

// Words

bool Part::accepts(const Request& request) {
    const bool checked = request.operation == chips::Operation::Write &&
                         (state_.value(Register::InitMisc) & 0x40) != 0 &&
                         request.address != special_.address && request.address != refresh_.address;
    const bool marked = (request.word & markBit) != 0;
    if (!checked || (std::popcount(request.data) % 2 == 0) == marked)
        return true;
    state_.set(spiError);
    return false;
}

std::optional<std::uint64_t> Part::written(const chips::Register& owner, std::uint64_t value) {
    const auto data = static_cast<std::uint8_t>(value);
    if (&owner == &special_)
        machine_.special(data);
    else if (&owner == &refresh_)
        machine_.refresh(data);
    else if (&owner == &mode_)
        machine_.select(data);
    else if (&owner != &interrupts_)
        return value;
    else {
        constexpr std::uint8_t request = 0x40; // for an interrupt; it clears itself
        if ((data & request) != 0)
            state_.set(interruptOnRequest);
        return data & ~std::uint64_t{request};
    }
    return std::nullopt;
}

void Part::wasRead(const chips::View& view) {
    if (&view == &leaveDebug_ || &view == &readMode_)
        machine_.leaveDebug();
    if (&view == &leaveDebug_)
        state_.set(safeActive, false);
}

// Answers

bool Part::anyLit(std::initializer_list<Row> rows) const {
    return std::ranges::any_of(rows, [this](Row row) { return state_.lit(row); });
}

std::optional<std::uint64_t> Part::status() const {
    std::uint64_t word = 0;
    for (const bool bit :
         {lines().interrupt, state_.anyWakeUp(), lines().reset || state_.lit(SafeReset),
          anyLit({CanLow, CanHigh}), anyLit({Lin1Low, Lin2Low}),
          anyLit({InputOutputLow, InputOutputHigh}), anyLit({SafeInterrupt, SafeReset}),
          anyLit({RegulatorLow, RegulatorHigh})})
        word = word << 1 | (bit ? 1 : 0);
    for (const Row row : {CanHigh, CanLow, Lin2Low, Lin1Low, InputOutputHigh, InputOutputLow,
                          RegulatorHigh, RegulatorLow})
        word = word << 1 | (state_.lit(row) ? 1 : 0);
    return word;
}

std::uint64_t Part::answer(std::uint64_t word, std::uint64_t answer) const {
    const bool reads =
        operationOf(word) != writeOperation && operationOf(word) != generalFlagsOperation;
    return reads && (word & markBit) == 0 ? answer & ~lowByte : answer;
}

std::optional<std::uint64_t> Part::shown(const chips::View& view) const {
    for (const MadeView& any : made_)
        if (any.view == &view)
            return (this->*any.value)();
    return std::nullopt;
}

std::uint8_t Part::specialMode() const {
    return static_cast<std::uint8_t>(machine_.selectBits() << 6 | random_.special());
}

std::uint8_t Part::mode() const {
    return static_cast<std::uint8_t>(machine_.code() << 3 | random_.mode());
}

std::uint8_t Part::modeFlags() const {
    return static_cast<std::uint8_t>(machine_.code() << 3 | (state_.has(safeActive) ? 0 : 2) |
                                     (state_.has(debug) ? 1 : 0));
}

/// Transmitter, receiver and wake-up as the mode of the CAN register enables them.
std::uint8_t Part::canState() const {
    constexpr std::array<std::uint8_t, 4> enabled{0x00, 0x40, 0x20, 0xC0};
    return enabled[state_.value(Register::Can) >> 6];
}

/// Level of each terminal: that of its switch when it drives one, else that of the pin.
std::uint8_t Part::inputOutputState() const {
    unsigned levels = 0;
    for (int terminal = 0; terminal < 4; ++terminal) {
        const int drive = (state_.value(Register::InputOutput) >> (2 * terminal)) & 3;
        const bool high =
            drive == 3 || (drive != 2 && state_.has({Pins, firstInputOutput + terminal}));
        levels |= high ? 1U << static_cast<unsigned>(2 * terminal) : 0U;
    }
    return static_cast<std::uint8_t>(levels);
}

// The user

void Part::addSwitches(SwitchTable& table) {
    table.add("Pins", {"RST", "INT", "SAFE", "Debug", "I/O 0", "I/O 1", "I/O 2", "I/O 3"},
              state_.row(Pins));
    table.add("Faults", {"No watchdog"}, state_.row(Faults));
}

void Part::turned(const StateBit& bit) {
    if (bit.isOn() && state_.isWakeUp(bit))
        machine_.wake();
}

std::vector<Reading> Part::readings() const {
    return {{"State", "Mode", std::string(machine_.name())},
            {"State", "Watchdog", machine_.watchdogLeft()},
            {"State", "Test mode",
             test_.on ? fmt::format("{:02X} {:02X}", state_.value(Register::RamA),
                                    state_.value(Register::RamB))
                      : "off"},
            {"State", "Trimming", test_.trimming}};
}

} // namespace

std::unique_ptr<ModelPart> makePart(ModelStore& store) {
    return std::make_unique<Part>(store);
}

} // namespace bitlux::zt72518
