#include "bench/zt72518/zt72518.h"

#include "bench/zt72518/mode_machine.h"
#include "bench/zt72518/state.h"
#include "bench/zt72518/switch_table.h"
#include "chips/zt72518/registers.h"

#include <bit>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr std::size_t wordLength = 16;

enum Operation : std::uint8_t { ReadRegister = 0, Write = 1, ReadGeneralFlags = 2, ReadFlags = 3 };

/// A word as the chip understands it. `marked` is its parity bit, or the read bit.
struct Request {
    unsigned operation;
    unsigned address;
    bool marked;
    std::uint8_t data;

    [[nodiscard]] bool highView() const { return (data & 0x80) != 0; }
};

/// The row of flags that a word reads; none for those of the mode and for no flags at all.
std::optional<std::size_t> flagRowOf(const Request& request) {
    for (std::size_t row = 0; row < flagRowCount; ++row)
        if ((flagRow(row).wordHigh >> 1 & 0x1F) == static_cast<int>(request.address) &&
            flagRow(row).highView == request.highView())
            return row;
    return std::nullopt;
}

class Model : public Chip {
public:
    explicit Model(const Variant& variant) {
        state_.rows[Identity] = variant.identity;
        state_.registers[Timer0] = 0x1E; // 256 ms
        state_.registers[Timer2] = 0xF0; // 2048 ms in Stop, 32768 ms in Flash
    }

    void timeIs(std::int64_t now) override { machine_.timeIs(now); }
    [[nodiscard]] ChipLines lines() const override;
    void enterTestMode() override { testMode_ = true; }
    void drawCurrent(std::int64_t duration) override { machine_.drawCurrent(duration); }
    void holdTxdLow(std::uint8_t time) override;

    [[nodiscard]] const std::vector<ChipSwitch>& switches() const override {
        return switchTable().switches;
    }
    [[nodiscard]] bool isOn(std::size_t index) const override {
        return state_.has(switchTable().bits.at(index));
    }
    void turn(std::size_t index, bool on) override;
    [[nodiscard]] std::vector<Reading> readings() const override;

protected:
    Shifted wordBegins(const BusShape&) override;
    [[nodiscard]] bool answerBit(std::size_t n) const override;
    void wordEnds(const Shifted& received, const BusShape&) override;

private:
    [[nodiscard]] Request request() const;
    [[nodiscard]] std::uint8_t status() const;
    [[nodiscard]] std::uint8_t generalFlags() const;
    [[nodiscard]] std::uint8_t answerTo(const Request& request) const;
    [[nodiscard]] std::uint8_t flags(const Request& request) const;
    [[nodiscard]] std::uint8_t lowView(unsigned address) const;
    [[nodiscard]] std::uint8_t highView(unsigned address) const;
    [[nodiscard]] std::uint8_t canState() const;
    [[nodiscard]] std::uint8_t inputOutputState() const;
    [[nodiscard]] std::uint8_t modeFlags() const;
    [[nodiscard]] std::uint8_t modeByte() const;
    [[nodiscard]] bool lit(Row row) const { return state_.rows[row] != 0; }
    [[nodiscard]] bool anyWakeUp() const;

    void carryOut(const Request& request);
    void write(const Request& request);
    void readEffects(const Request& request);

    State state_;
    RandomWords random_;
    ModeMachine machine_{state_, random_};
    bool taking_ = false; ///< the word on its way is listened to
    unsigned base_ = 0;   ///< status and general flags as the word began
    bool testMode_ = false;
    std::string trimming_ = "none";
};

std::vector<bool> toBits(unsigned word) {
    std::vector<bool> bits(wordLength);
    for (std::size_t n = 0; n < wordLength; ++n)
        bits[n] = ((word >> (wordLength - 1 - n)) & 1) != 0;
    return bits;
}

ChipLines Model::lines() const {
    return {.interrupt = state_.has(pinInterrupt) || lit(SafeInterrupt),
            .reset = state_.has(pinReset) || machine_.mode() == ModeMachine::Mode::Reset};
}

bool Model::anyWakeUp() const {
    for (std::size_t row = 0; row < flagRowCount; ++row)
        for (int bit = 0; bit < 8; ++bit)
            if (const Bit flag{static_cast<Row>(row), bit}; isWakeUp(flag) && state_.has(flag))
                return true;
    return false;
}

std::uint8_t Model::status() const {
    unsigned byte = 0;
    for (const bool bit :
         {lines().interrupt, anyWakeUp(), lines().reset || lit(SafeReset),
          lit(CanLow) || lit(CanHigh), lit(Lin1Low) || lit(Lin2Low),
          lit(InputOutputLow) || lit(InputOutputHigh), lit(SafeInterrupt) || lit(SafeReset),
          lit(RegulatorLow) || lit(RegulatorHigh)})
        byte = byte << 1 | (bit ? 1U : 0U);
    return static_cast<std::uint8_t>(byte);
}

std::uint8_t Model::generalFlags() const {
    unsigned byte = 0;
    for (const Row row : {CanHigh, CanLow, Lin2Low, Lin1Low, InputOutputHigh, InputOutputLow,
                          RegulatorHigh, RegulatorLow})
        byte = byte << 1 | (lit(row) ? 1U : 0U);
    return static_cast<std::uint8_t>(byte);
}

Chip::Shifted Model::wordBegins(const BusShape&) {
    taking_ = machine_.answers() && !state_.has(silent) && !state_.has(stuckHigh);
    base_ = static_cast<unsigned>(status()) << 8 | generalFlags();
    return state_.has(stuckHigh) ? toBits(0xFFFF) : taking_ ? toBits(base_) : Shifted{};
}

Request Model::request() const {
    const std::uint32_t word = requestWord(wordLength);
    return {.operation = word >> 14,
            .address = word >> 9 & 0x1F,
            .marked = (word >> 8 & 1) != 0,
            .data = static_cast<std::uint8_t>(word & 0xFF)};
}

bool Model::answerBit(std::size_t n) const {
    if (!taking_ || n < 8 || n >= wordLength)
        return ShiftDevice::answerBit(n);
    return ((answerTo(request()) >> (wordLength - 1 - n)) & 1) != 0;
}

std::uint8_t Model::answerTo(const Request& request) const {
    if (request.operation == Write || request.operation == ReadGeneralFlags)
        return static_cast<std::uint8_t>(base_ & 0xFF);
    if (!request.marked)
        return 0;
    if (request.operation == ReadFlags)
        return flags(request);
    return request.highView() ? highView(request.address) : lowView(request.address);
}

std::uint8_t Model::flags(const Request& request) const {
    if (request.address == Mode)
        return modeFlags();
    const std::optional<std::size_t> row = flagRowOf(request);
    return row ? state_.rows[*row] : std::uint8_t{0};
}

std::uint8_t Model::modeFlags() const {
    return static_cast<std::uint8_t>(machine_.code() << 3 | (state_.has(safeActive) ? 0 : 2) |
                                     (state_.has(debug) ? 1 : 0));
}

std::uint8_t Model::modeByte() const {
    return static_cast<std::uint8_t>(machine_.code() << 3 | random_.mode());
}

std::uint8_t Model::lowView(unsigned address) const {
    switch (address) {
    case SpecialMode:
        return static_cast<std::uint8_t>(machine_.selectBits() << 6 | random_.special());
    case WatchdogRefresh:
        return random_.watchdog();
    case Mode:
        return modeByte();
    default:
        return address < registerCount ? state_.registers[address] : std::uint8_t{0};
    }
}

std::uint8_t Model::highView(unsigned address) const {
    switch (address) {
    case Can:
        return canState();
    case InputOutput:
        return inputOutputState();
    case Interrupts:
        return state_.rows[Identity];
    case Lin1:
    case Lin2:
        return state_.registers[address] & 0xC0;
    default:
        return lowView(address);
    }
}

/// Transmitter, receiver and wake-up as the mode of the CAN register enables them.
std::uint8_t Model::canState() const {
    constexpr std::array<std::uint8_t, 4> enabled{0x00, 0x40, 0x20, 0xC0};
    return enabled[state_.registers[Can] >> 6];
}

/// Level of each terminal: that of its switch when it drives one, else that of the pin.
std::uint8_t Model::inputOutputState() const {
    unsigned levels = 0;
    for (int terminal = 0; terminal < 4; ++terminal) {
        const int drive = (state_.registers[InputOutput] >> (2 * terminal)) & 3;
        const bool high =
            drive == 3 || (drive != 2 && state_.has({Pins, firstInputOutput + terminal}));
        levels |= high ? 1U << static_cast<unsigned>(2 * terminal) : 0U;
    }
    return static_cast<std::uint8_t>(levels);
}

void Model::wordEnds(const Shifted& received, const BusShape&) {
    if (!taking_)
        return;
    if (received.size() == wordLength)
        carryOut(request());
    else if (!received.empty())
        state_.set(spiError);
}

void Model::carryOut(const Request& request) {
    if (request.operation == Write)
        write(request);
    else if (request.marked)
        readEffects(request);
}

void Model::write(const Request& request) {
    const bool checked = (state_.registers[InitMisc] & 0x40) != 0 &&
                         request.address != SpecialMode && request.address != WatchdogRefresh;
    if (checked && (std::popcount(request.data) % 2 == 0) != request.marked) {
        state_.set(spiError);
        return;
    }
    switch (request.address) {
    case SpecialMode:
        return machine_.special(request.data);
    case WatchdogRefresh:
        return machine_.refresh(request.data);
    case Mode:
        return machine_.select(request.data);
    case Interrupts: // the request for an interrupt clears itself
        if ((request.data & 0x40) != 0)
            state_.set(interruptOnRequest);
        state_.registers[Interrupts] = request.data & 0xBF;
        return;
    default:
        if (request.address < registerCount)
            state_.registers[request.address] = request.data;
    }
}

void Model::readEffects(const Request& request) {
    const bool isFlags = request.operation == ReadFlags;
    if (request.address == Mode && !request.highView()) {
        machine_.leaveDebug();
        if (isFlags)
            state_.set(safeActive, false);
    }
    const std::optional<std::size_t> row = flagRowOf(request);
    if (isFlags && row && !state_.has(flagsStay))
        state_.rows[*row] = 0;
}

void Model::holdTxdLow(std::uint8_t time) {
    if (testMode_)
        trimming_ = fmt::format("{:02X} {:02X}, TXD low {}", state_.registers[RamA],
                                state_.registers[RamB], time);
}

void Model::turn(std::size_t index, bool on) {
    const Bit bit = switchTable().bits.at(index);
    state_.set(bit, on);
    if (on && isWakeUp(bit))
        machine_.wake();
}

std::vector<Reading> Model::readings() const {
    constexpr double millisecond = 1e6;
    std::vector<Reading> all{
        {"State", "Mode", std::string(machine_.name())},
        {"State", "Watchdog",
         machine_.watchdogRuns()
             ? fmt::format("{:.1f} ms left",
                           static_cast<double>(machine_.watchdogLeft()) / millisecond)
             : "off"},
        {"State", "Test mode",
         testMode_ ? fmt::format("{:02X} {:02X}", state_.registers[RamA], state_.registers[RamB])
                   : "off"},
        {"State", "Trimming", trimming_}};
    for (std::size_t address = 0; address < registerCount; ++address)
        all.push_back({"Registers", std::string(oldchips::zt72518::registers[address].title),
                       fmt::format("{:02X}", lowView(static_cast<unsigned>(address)))});
    return all;
}

} // namespace

std::unique_ptr<Chip> makeChip(const Variant& variant) {
    return std::make_unique<Model>(variant);
}

} // namespace bitlux::zt72518
