#include "bench/zt72361/zt72361.h"

#include "bench/model/byte_service.h"
#include "bench/model/mode_timers.h"
#include "platform/dongle_commands.h"
#include "platform/time_units.h"

#include <array>

namespace bitlux::zt72361 {

namespace {

constexpr std::int64_t resetTime = 5 * millisecond;
constexpr std::array<std::int64_t, 4> watchdogPeriods{10, 45, 100, 350}; // ms, by timer 1
constexpr std::int64_t lastMoment = 1; ///< in which a write still counts

constexpr ByteService::Chip refreshes{.number = dongle::serve72361,
                                      .on = 1,
                                      .step = 2 * millisecond,
                                      .type = 1,
                                      .stoppedByWords = false};

/// As MCR counts them; 5 to 7 are the first three in debug mode.
enum class Mode : std::uint8_t { Reset, Normal, Standby, Stop, Sleep };
constexpr std::array modeNames{"Reset", "Normal", "Standby", "Stop", "Sleep"};
constexpr std::uint64_t toggleDebug = 0;
constexpr std::uint64_t lastMode = 4;
constexpr std::uint64_t lastDebugMode = 7;

// Bits of registers
constexpr std::uint64_t sleepAllowed = 4; // of RCR
constexpr std::uint64_t watchdogInStop = 8;
constexpr std::uint64_t canMode = 3; // of CAN
constexpr std::uint64_t canSleepsAndWakes = 1;
constexpr std::uint64_t clearFlags = 8;

constexpr std::uint64_t canWakeUp = 8; // of the flags of CAN
constexpr int canWakeUpBit = 3;

constexpr std::uint64_t bitOf(std::uint64_t word, int bit) {
    return word >> bit & 1;
}

class Part : public ModelPart {
public:
    explicit Part(ModelStore& store)
        : store_(store),
          mode_(store.owner("MCR")),
          can_(store.owner("CAN")),
          timer_(store.owner("TIM 1")),
          flagsOfMode_(store.view("MCR flags", "READ")),
          flagsOfReset_(store.view("RCR flags", "READ")),
          flagsOfInterrupts_(store.view("INTR flags", "READ")),
          modeFlags_(store.flags("LblMCR")),
          canFlags_(store.flags("LblCAN")),
          stateFlags_(store.flags("LblIOR")),
          wakeUpFlags_(store.flags("LblWUR")) {}

    void timeIs(std::int64_t now) override {
        timers_.timeIs(now, [this](ModeTimers::Event event) { take(event); });
    }
    [[nodiscard]] ChipLines lines() const override {
        return {.interrupt = now_ != Mode::Sleep &&
                             (interrupts() | wakeUpFlags_ | (canFlags_ & canWakeUp)) != 0,
                .reset = now_ == Mode::Reset};
    }
    void addPhase(Phase& phase) const override {
        timers_.addPhase(phase);
        phase.push_back(static_cast<std::int64_t>(now_));
    }
    void skip(std::int64_t duration) override { timers_.skip(duration); }
    DongleServices dongleServices() override {
        DongleServices services;
        services.push_back(std::make_unique<ByteService>(refreshes));
        return services;
    }

    [[nodiscard]] bool listens() const override {
        return now_ != Mode::Reset && now_ != Mode::Sleep;
    }
    std::optional<std::uint64_t> written(const chips::Register& owner,
                                         std::uint64_t value) override;
    void wasRead(const chips::View& view) override {
        if (&view == &flagsOfMode_)
            watchdogReset_.set(false);
    }
    [[nodiscard]] std::optional<std::uint64_t> shown(const chips::View& view) const override;

    void turned(const StateBit& bit) override;
    [[nodiscard]] std::vector<Reading> readings() const override {
        return {{"State", "Mode",
                 std::string(modeNames[static_cast<std::size_t>(now_)]) +
                     (debug_.isOn() ? ", debug" : "")},
                {"State", "Watchdog", timers_.watchdogLeft()}};
    }

private:
    std::uint64_t& value(const char* title) const { return store_.of(store_.owner(title)); }
    [[nodiscard]] std::int64_t period() const;
    [[nodiscard]] std::uint64_t interrupts() const;
    [[nodiscard]] bool wakes(const StateBit& bit) const;

    void enter(Mode mode);
    void select(std::uint64_t code);
    void setDebug(bool on);
    void reset();
    void take(ModeTimers::Event event);

    ModelStore& store_;
    const chips::Register& mode_;
    const chips::Register& can_;
    const chips::Register& timer_;
    const chips::View& flagsOfMode_;
    const chips::View& flagsOfReset_;
    const chips::View& flagsOfInterrupts_;
    std::uint64_t& modeFlags_;
    std::uint64_t& canFlags_;
    std::uint64_t& stateFlags_;
    std::uint64_t& wakeUpFlags_;
    const StateBit watchdogReset_{&modeFlags_, 0};
    const StateBit debug_{&stateFlags_, 0}; ///< a flag as others: it can be turned on

    Mode now_ = Mode::Standby;
    ModeTimers timers_;
};

// Modes

std::int64_t Part::period() const {
    const bool runs =
        now_ == Mode::Normal || (now_ == Mode::Stop && (value("RCR") & watchdogInStop) != 0);
    return runs && !debug_.isOn()
               ? watchdogPeriods.at(value("TIM 1") & 3) * millisecond + lastMoment
               : 0;
}

void Part::enter(Mode mode) {
    now_ = mode;
    timers_.begin(period());
}

void Part::select(std::uint64_t code) {
    if (code == toggleDebug)
        return setDebug(!debug_.isOn());
    const auto mode = static_cast<Mode>(code > lastMode ? code - lastMode : code);
    if (code > lastDebugMode || (mode == Mode::Sleep && (value("RCR") & sleepAllowed) == 0))
        return;
    setDebug(code > lastMode);
    if (mode != now_)
        enter(mode);
}

void Part::setDebug(bool on) {
    if (debug_.isOn() == on)
        return;
    debug_.set(on);
    timers_.restartWatchdog(period());
}

void Part::reset() {
    store_.resetWritten();
    debug_.set(false);
    enter(Mode::Reset);
    timers_.endResetIn(resetTime);
}

void Part::take(ModeTimers::Event event) {
    if (event == ModeTimers::Event::ResetEnds)
        return enter(Mode::Standby);
    watchdogReset_.set();
    reset();
}

bool Part::wakes(const StateBit& bit) const {
    if (bit.word == &canFlags_ && bit.bit == canWakeUpBit)
        return (value("CAN") & canMode) == canSleepsAndWakes;
    return bit.word == &wakeUpFlags_ && (value("WUR") >> (bit.bit / 2 * 2) & 3) != 0;
}

void Part::turned(const StateBit& bit) {
    if (bit.word == debug_.word && bit.bit == debug_.bit)
        timers_.restartWatchdog(period());
    else if (bit.isOn() && wakes(bit) && now_ == Mode::Stop)
        enter(Mode::Standby);
    else if (bit.isOn() && wakes(bit) && now_ == Mode::Sleep)
        reset();
}

// Words

std::optional<std::uint64_t> Part::written(const chips::Register& owner, std::uint64_t value) {
    if (&owner == &timer_) {
        store_.of(timer_) = value;
        timers_.restartWatchdog(period());
    } else if (&owner == &mode_) {
        select(value);
    } else if (&owner == &can_ && (value & clearFlags) != 0) {
        canFlags_ = store_.flags("LblTIM") = store_.flags("LblLpc") = 0;
        return value & ~clearFlags;
    }
    return value;
}

std::optional<std::uint64_t> Part::shown(const chips::View& view) const {
    if (&view == &flagsOfReset_)
        return value("RCR");
    if (&view == &flagsOfInterrupts_)
        return interrupts();
    return std::nullopt;
}

std::uint64_t Part::interrupts() const {
    constexpr int canFailure = 2;
    constexpr int hot = 2; // VDDTEMP
    constexpr int supplyLow = 1;
    constexpr int highSideHot = 2;
    constexpr int secondSupplyLow = 3;
    const std::uint64_t all =
        bitOf(canFlags_, canFailure) | bitOf(modeFlags_, hot) << 1 |
        (bitOf(stateFlags_, highSideHot) | bitOf(stateFlags_, secondSupplyLow)) << 2 |
        bitOf(stateFlags_, supplyLow) << 3;
    return all & ~value("INTR");
}

} // namespace

std::unique_ptr<ModelPart> makePart(ModelStore& store) {
    return std::make_unique<Part>(store);
}

} // namespace bitlux::zt72361
