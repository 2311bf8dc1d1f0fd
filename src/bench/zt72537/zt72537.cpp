#include "bench/zt72537/zt72537.h"

#include "bench/model/byte_service.h"
#include "bench/model/mode_timers.h"
#include "platform/dongle_commands.h"
#include "platform/time_units.h"

#include <array>

namespace bitlux::zt72537 {

namespace {

constexpr std::int64_t watchdogPeriod = 10 * millisecond;
constexpr std::int64_t wakeUpStep = 20 * millisecond;
constexpr std::int64_t resetTime = 5 * millisecond;

constexpr ByteService::Chip clears{.number = dongle::serve72537,
                                   .on = 2,
                                   .step = millisecond * 3 / 4, // of the commanded period
                                   .type = 2,
                                   .stoppedByWords = true};

enum class Mode : std::uint8_t { Normal, Stop, Sleep, Reset };
constexpr std::array modeNames{"Normal", "Stop", "Sleep", "Reset"};

/// Of ISR, the lowest one first.
enum Interrupt : std::uint8_t { None, Input, HighSide, LowSide, Lin, Voltage, Forced };

// Data of words
constexpr std::uint64_t modeBits = 3; // of MCR: 3 is Normal as well, and clears the watchdog
constexpr std::uint64_t clearCode = 3;
constexpr std::uint64_t timesWakeUp = 8; // of TIMCR, else the watchdog
constexpr std::uint64_t timeBits = 7;
constexpr std::uint64_t slowWakeUp = 4;  // of CFR: 8 times the interval
constexpr std::uint64_t highSidesOn = 3; // of HSCR
constexpr std::uint64_t overTemperature = 15;

// Bits of WDSR
constexpr std::uint64_t windowOpen = 1;
constexpr std::uint64_t watchdogOff = 2;
constexpr std::uint64_t clearedEarly = 4;
constexpr std::uint64_t timedOut = 8;

class Part : public ModelPart {
public:
    explicit Part(ModelStore& store)
        : store_(store),
          mode_(store.owner("MCR")),
          timing_(store.owner("TIMCR")),
          watchdogView_(store.view("WDSR", "READ")),
          interruptView_(store.view("ISR", "READ")),
          watchdogFlags_(value("WDSR")),
          inputFlags_(value("WUSR")) {}

    void timeIs(std::int64_t now) override {
        timers_.timeIs(now, [this](ModeTimers::Event event) { take(event); });
    }
    [[nodiscard]] ChipLines lines() const override {
        return {.interrupt = now_ != Mode::Sleep && interrupt() != None,
                .reset = now_ == Mode::Reset};
    }
    void addPhase(Phase& phase) const override;
    void skip(std::int64_t duration) override {
        timers_.skip(duration);
        opens_.skip(duration);
    }
    DongleServices dongleServices() override {
        DongleServices services;
        services.push_back(std::make_unique<ByteService>(clears));
        return services;
    }

    [[nodiscard]] bool listens() const override {
        return now_ == Mode::Normal || now_ == Mode::Stop;
    }
    std::optional<std::uint64_t> written(const chips::Register& owner,
                                         std::uint64_t value) override;
    void wasRead(const chips::View& view) override;
    [[nodiscard]] std::optional<std::uint64_t> shown(const chips::View& view) const override;

    void addSwitches(SwitchTable& table) override {
        table.add("WDSR", {"-", "-", "WDERR", "WDTO"}, watchdogFlags_);
        table.add("Pins", {"LIN wake-up"}, pins_);
    }
    void turned(const StateBit& bit) override;
    [[nodiscard]] std::vector<Reading> readings() const override {
        return {{"State", "Mode", modeNames[static_cast<std::size_t>(now_)]},
                {"State", "Watchdog", timers_.watchdogLeft()}};
    }

private:
    std::uint64_t& value(const char* title) const { return store_.of(store_.owner(title)); }
    [[nodiscard]] bool isLowPower() const { return now_ == Mode::Stop || now_ == Mode::Sleep; }
    [[nodiscard]] std::uint64_t enabledInputs() const { return inputFlags_ & value("WUCR"); }
    [[nodiscard]] std::int64_t interval() const {
        const bool slow = (value("CFR") & slowWakeUp) != 0;
        return static_cast<std::int64_t>(interval_) * wakeUpStep * (slow ? 8 : 1);
    }
    /// The inputs are sampled once per interval.
    [[nodiscard]] bool sensesCyclically() const {
        return interval_ != 0 && (value("HSCR") & highSidesOn) != 0 && value("WUCR") != 0;
    }
    [[nodiscard]] Interrupt interrupt() const;

    void enter(Mode mode);
    void reset();
    void select(std::uint64_t code);
    void clearWatchdog();
    void fail(std::uint64_t flag);
    void take(ModeTimers::Event event);
    void wake(Interrupt cause);

    ModelStore& store_;
    const chips::Register& mode_;
    const chips::Register& timing_;
    const chips::View& watchdogView_;
    const chips::View& interruptView_;
    std::uint64_t& watchdogFlags_;
    std::uint64_t& inputFlags_;

    Mode now_ = Mode::Normal;
    std::uint64_t prescaler_ = 0;
    std::uint64_t interval_ = 0;
    std::uint64_t pins_ = 0;
    std::uint64_t wakeUps_ = 0; ///< bit n is the interrupt n
    ModeTimers timers_;
    Deadline opens_; ///< the window of the watchdog
};

void Part::addPhase(Phase& phase) const {
    timers_.addPhase(phase);
    opens_.addPhase(phase, timers_.now());
    phase.push_back(static_cast<std::int64_t>(now_));
    for (const std::uint64_t any : {prescaler_, interval_, pins_, wakeUps_})
        phase.push_back(static_cast<std::int64_t>(any));
}

// Modes

void Part::enter(Mode mode) {
    now_ = mode;
    timers_.begin(0);
    opens_.clear();
    if (isLowPower() && interval_ != 0)
        timers_.wakeUpIn(interval());
}

void Part::reset() {
    enter(Mode::Reset);
    timers_.endResetIn(resetTime);
    store_.resetWritten();
    prescaler_ = interval_ = 0;
}

void Part::select(std::uint64_t code) {
    if (code == 1 || code == 2)
        return enter(code == 1 ? Mode::Stop : Mode::Sleep);
    if (now_ == Mode::Stop)
        enter(Mode::Normal);
    if (code == clearCode)
        clearWatchdog();
}

void Part::clearWatchdog() {
    if (timers_.watchdogRuns() && !opens_.isDue(timers_.now()))
        return fail(clearedEarly);
    const auto times = static_cast<std::int64_t>(prescaler_ == 0 ? 1 : 2 * prescaler_);
    timers_.restartWatchdog(times * watchdogPeriod);
    opens_.set(timers_.now() + times * watchdogPeriod / 2);
}

void Part::fail(std::uint64_t flag) {
    watchdogFlags_ |= flag;
    reset();
}

void Part::take(ModeTimers::Event event) {
    if (event == ModeTimers::Event::ResetEnds)
        enter(Mode::Normal);
    else if (event == ModeTimers::Event::WatchdogExpires)
        fail(timedOut);
    else if (!sensesCyclically())
        wake(Forced);
    else if (enabledInputs() != 0)
        wake(Input);
    else
        timers_.wakeUpIn(interval());
}

void Part::wake(Interrupt cause) {
    wakeUps_ |= std::uint64_t{1} << cause;
    if (now_ == Mode::Sleep)
        reset();
    else
        enter(Mode::Normal);
}

void Part::turned(const StateBit& bit) {
    if (!isLowPower() || !bit.isOn())
        return;
    if (bit.word == &pins_)
        wake(Lin);
    else if (bit.word == &inputFlags_ && (enabledInputs() >> bit.bit & 1) != 0 &&
             !sensesCyclically())
        wake(Input);
}

// Words

std::optional<std::uint64_t> Part::written(const chips::Register& owner, std::uint64_t value) {
    if (&owner == &timing_)
        ((value & timesWakeUp) != 0 ? interval_ : prescaler_) = value & timeBits;
    if (&owner == &mode_)
        select(value & modeBits);
    return now_ == Mode::Reset ? std::nullopt : std::optional(value);
}

void Part::wasRead(const chips::View& view) {
    if (&view == &watchdogView_)
        watchdogFlags_ = 0;
    else if (&view == &interruptView_)
        wakeUps_ = 0;
}

std::optional<std::uint64_t> Part::shown(const chips::View& view) const {
    if (&view == &interruptView_)
        return interrupt();
    if (&view != &watchdogView_)
        return std::nullopt;
    return watchdogFlags_ | (opens_.isDue(timers_.now()) ? windowOpen : 0) |
           (timers_.watchdogRuns() ? 0 : watchdogOff);
}

Interrupt Part::interrupt() const {
    const std::uint64_t masks = value("IMR");
    const auto woke = [this](Interrupt cause) { return (wakeUps_ >> cause & 1) != 0; };
    const auto allowed = [masks](int mask) { return (masks >> mask & 1) == 0; };
    if (woke(Input))
        return Input;
    if (allowed(3) && value("HSSR") == overTemperature)
        return HighSide;
    if (allowed(2) && value("LSSR") == overTemperature)
        return LowSide;
    if (allowed(1) && (woke(Lin) || value("LINSR") != 0))
        return Lin;
    if (allowed(0) && value("VSR") != 0)
        return Voltage;
    return woke(Forced) ? Forced : None;
}

} // namespace

std::unique_ptr<ModelPart> makePart(ModelStore& store) {
    return std::make_unique<Part>(store);
}

} // namespace bitlux::zt72537
