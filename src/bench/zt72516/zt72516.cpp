#include "bench/zt72516/zt72516.h"

#include "bench/model/mode_timers.h"
#include "bench/model/refresh_service.h"
#include "bench/model/watchdog_times.h"
#include "platform/dongle_commands.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>

namespace bitlux::zt72516 {

namespace {

constexpr std::uint64_t refreshAddress = 0x07;
constexpr std::uint64_t inhibitAddress = 0x1E;
constexpr std::uint64_t safeAddress = 0x1F;
constexpr std::uint64_t firstTestAddress = 0x31;
constexpr int addressShift = 24;
constexpr std::uint64_t wakeUpSummary = std::uint64_t{1} << 30;

// Bits of the flags of Interrupt
constexpr int resetRequest = 5;
constexpr int interruptRequest = 7;
constexpr int refreshFailed = 8;
constexpr int multipleResets = 9;
constexpr int spiWakeUp = 13;
constexpr int forcedWakeUp = 14;
// and of MODE
constexpr int firstState = 3;
constexpr int safeActive = 8;

constexpr RefreshService::Chip refreshes{
    .command = dongle::watchdog72516,
    .stop = 0,
    .refresh = 0x47000000,
    .readCode = 0x07000000,
    .bits = 32,
    .type = 1,
    .modes = {"Simple", "Advanced 1", "Advanced 2", "Advanced 4"}};

constexpr std::uint64_t bits(std::uint64_t word, int low, int count) {
    return word >> low & ((std::uint64_t{1} << count) - 1);
}

class Part : public ModelPart {
public:
    explicit Part(ModelStore& store)
        : store_(store),
          init_(store.owner("INIT")),
          timer_(store.of(store.owner("TIMER"))),
          special_(store.owner("SPE_MODE")),
          mode_(store.owner("MODE")),
          interrupt_(store.owner("Interrupt")),
          passcode_(store.owner("Passcode")),
          interruptFlags_(store.flags("Interrupt_Flag")),
          modeFlags_(store.flags("MODE_Flags")) {
        enter(State::Init);
    }

    void timeIs(std::int64_t now) override {
        timers_.timeIs(now, [this](ModeTimers::Event event) { take(event); });
    }
    [[nodiscard]] ChipLines lines() const override {
        return {.interrupt = interruptFlags_ != 0, .reset = state_ == State::Reset};
    }
    void addPhase(Phase& phase) const override;
    void skip(std::int64_t duration) override { timers_.skip(duration); }
    DongleServices dongleServices() override {
        DongleServices services;
        services.push_back(std::make_unique<RefreshService>(refreshes));
        return services;
    }

    [[nodiscard]] bool listens() const override {
        return state_ != State::Reset && state_ != State::Off;
    }
    bool accepts(const Request& request) override;
    std::optional<std::uint64_t> written(const chips::Register& owner,
                                         std::uint64_t value) override;
    void wasRead(const chips::View& view) override {
        if (view.address == special_.address && view.operation == chips::Operation::Read)
            expected_ = ~std::exchange(code_, draw()) & 0xFF;
    }

    [[nodiscard]] std::optional<std::uint64_t> shown(const chips::View& view) const override;
    [[nodiscard]] std::uint64_t answer(std::uint64_t word, std::uint64_t answer) const override {
        return word >> addressShift == refreshAddress ? answer | refreshCode_ : answer;
    }
    void turned(const StateBit& bit) override {
        if ((state_ == State::On || state_ == State::Off) && bit.isOn() &&
            (store_.summaryOf(bit) & wakeUpSummary) != 0)
            enter(State::Normal);
    }
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    enum class State : std::uint8_t { Reset, Init, Flash, Normal, On, Off };

    std::uint8_t draw() { return static_cast<std::uint8_t>(random_() >> 8U); }
    static void set(std::uint64_t& word, int bit) { word |= std::uint64_t{1} << bit; }
    /// A field of INIT.
    [[nodiscard]] std::uint64_t chosen(int low, int count) const {
        return bits(store_.of(init_), low, count);
    }
    [[nodiscard]] bool inTestMode() const { return (store_.of(passcode_) & 1) != 0; }
    [[nodiscard]] std::int64_t period() const;
    void take(ModeTimers::Event event);
    void enter(State state);
    void reset();
    void failRefresh();
    void refresh(std::uint64_t data);
    void select(std::uint64_t data);
    void changeMode(std::uint64_t data);
    void wake(int flag);

    ModelStore& store_;
    const chips::Register& init_;
    const std::uint64_t& timer_;
    const chips::Register& special_;
    const chips::Register& mode_;
    const chips::Register& interrupt_;
    const chips::Register& passcode_;
    std::uint64_t& interruptFlags_;
    std::uint64_t& modeFlags_;

    std::minstd_rand random_; // the same codes come at every run
    std::uint8_t code_ = draw();
    std::optional<std::uint64_t> expected_; ///< by SPE_MODE
    std::uint8_t refreshCode_ = draw();
    LowPowerCode lowPower_{0}; ///< that was selected last
    State state_ = State::Init;
    bool inhibited_ = true;
    int failures_ = 0; ///< resets by the watchdog since the last refresh
    ModeTimers timers_;
};

void Part::addPhase(Phase& phase) const {
    timers_.addPhase(phase);
    for (const std::uint64_t value : {std::uint64_t{static_cast<std::uint8_t>(state_)},
                                      std::uint64_t{code_}, std::uint64_t{refreshCode_}})
        phase.push_back(static_cast<std::int64_t>(value));
}

// Modes and the watchdog

void Part::enter(State state) {
    constexpr int stateBits = 5;
    state_ = state;
    modeFlags_ ^= (bits(modeFlags_, firstState, stateBits) ^ static_cast<std::uint64_t>(state))
                  << firstState;
    timers_.begin(period());
}

void Part::take(ModeTimers::Event event) {
    if (event == ModeTimers::Event::ResetEnds)
        enter(State::Init);
    else if (event == ModeTimers::Event::WakesUp)
        wake(forcedWakeUp);
    else
        failRefresh();
}

std::int64_t Part::period() const {
    const std::uint64_t longPeriod = bits(timer_, 20, 4);
    if (inhibited_ && chosen(16, 3) == 0)
        return 0;
    if (state_ == State::Normal)
        return watchdogPeriod(timer_);
    if (state_ == State::Flash)
        return flashPeriod(longPeriod);
    return state_ == State::On && lowPower_.hasWatchdog() ? lowPowerPeriod(longPeriod) : 0;
}

void Part::reset() {
    enter(State::Reset);
    timers_.endResetIn(resetDuration(chosen(3, 2)));
}

void Part::failRefresh() {
    constexpr std::array limits{1, 2, 3, 5};
    set(interruptFlags_, refreshFailed);
    if (++failures_ > 1)
        set(interruptFlags_, multipleResets);
    if (failures_ >= limits.at(chosen(11, 2)))
        set(modeFlags_, safeActive);
    reset();
}

void Part::refresh(std::uint64_t data) {
    using Outcome = ServedWatchdog::Outcome;
    const bool window = chosen(8, 1) != 0 && state_ == State::Normal;
    const Outcome outcome = timers_.refresh(
        data, refreshCode_, static_cast<RefreshMode>(chosen(9, 2)), window ? period() / 2 : 0);
    if (outcome == Outcome::Begun)
        return;
    refreshCode_ = draw();
    if (outcome == Outcome::Refreshed) {
        failures_ = 0;
        enter(state_ == State::Init ? State::Normal : state_);
    } else if (timers_.watchdogRuns()) {
        failRefresh();
    }
}

void Part::select(std::uint64_t data) {
    if (std::exchange(expected_, std::nullopt) != (data & 0xFF))
        return;
    switch (bits(data, 8, 3)) {
    case 0:
        set(interruptFlags_, resetRequest);
        return reset();
    case 1:
        return enter(State::Init);
    case 2:
        return enter(State::Flash);
    case 3:
        for (const char* title : {"SGWU", "SGFS", "SGWUD", "SGM0", "SGM1", "SGMT", "SGT"})
            store_.of(store_.owner(title)) = store_.owner(title).reset;
        return;
    default:
        return;
    }
}

void Part::changeMode(std::uint64_t data) {
    const LowPowerCode code{bits(data, 3, 5)};
    if (state_ == State::On && code.wakes())
        return wake(spiWakeUp);
    const bool wantsCode = chosen(23, 1) != 0;
    if (state_ != State::Normal || !(code.keepsVdd() || code.dropsVdd()) ||
        (wantsCode && ((data ^ ~code_) & 7) != 0))
        return;
    lowPower_ = code;
    enter(code.keepsVdd() ? State::On : State::Off);
    if (code.wakesByTimer())
        timers_.wakeUpIn(forcedWakeUpPeriod(timer_ >> 16));
}

void Part::wake(int flag) {
    set(interruptFlags_, flag);
    enter(State::Normal);
}

// Words

bool Part::accepts(const Request& request) {
    if (request.operation != chips::Operation::Write)
        return true;
    if (request.address == refreshAddress) {
        refresh(request.data);
    } else if (request.address == safeAddress) {
        modeFlags_ &= ~(std::uint64_t{1} << safeActive);
    } else if (request.address == inhibitAddress) {
        inhibited_ = false;
        enter(state_);
    } else if (request.address == passcode_.address) {
        const bool good =
            std::ranges::any_of(store_.chip().commands, [&request](const chips::Command& any) {
                return any.word == request.word;
            });
        StateBit{&store_.of(passcode_), 0}.set(good);
    }
    return request.address < firstTestAddress || inTestMode();
}

std::optional<std::uint64_t> Part::written(const chips::Register& owner, std::uint64_t value) {
    if (&owner == &special_)
        select(value);
    else if (&owner == &mode_)
        changeMode(value);
    else if (&owner == &interrupt_) {
        constexpr int request = 8; // it clears itself
        if (bits(value, request, 1) != 0)
            set(interruptFlags_, interruptRequest);
        return value & ~(std::uint64_t{1} << request);
    } else
        return value;
    return std::nullopt;
}

std::optional<std::uint64_t> Part::shown(const chips::View& view) const {
    if (view.operation != chips::Operation::Read)
        return std::nullopt;
    const auto number = static_cast<std::uint64_t>(state_);
    if (view.address == special_.address)
        return number << 8 | code_;
    if (view.address == mode_.address)
        return (state_ == State::On ? lowPower_.code : number) << 3 | (code_ & 7);
    return std::nullopt;
}

std::vector<Reading> Part::readings() const {
    constexpr std::array names{
        "Reset", "Init", "Flash", "Normal", "Low power VDD on", "Low power VDD off"};
    return {{"State", "Mode", names.at(static_cast<std::size_t>(state_))},
            {"State", "Watchdog", timers_.watchdogLeft()},
            {"State", "Test mode", inTestMode() ? "on" : "off"}};
}

} // namespace

std::unique_ptr<ModelPart> makePart(ModelStore& store) {
    return std::make_unique<Part>(store);
}

} // namespace bitlux::zt72516
