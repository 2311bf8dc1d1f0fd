#include "bench/zt72516/zt72516.h"

#include "bench/zt72516/refresh_service.h"
#include "platform/failure.h"

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <string>

#include <fmt/format.h>

namespace bitlux::zt72516 {

namespace {

constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();
constexpr double millisecond = 1e6;
constexpr std::uint64_t refreshAddress = 0x07;
constexpr std::uint64_t inhibitAddress = 0x1E;
constexpr std::uint64_t safeAddress = 0x1F;
constexpr std::uint64_t passcodeAddress = 0x30;
constexpr std::uint64_t firstTestAddress = 0x31;
constexpr std::uint64_t revision = 1 << 1; ///< REV ID 1

// Bits of the flags of Interrupt
constexpr int resetRequest = 5;
constexpr int interruptRequest = 7;
constexpr int refreshFailed = 8;
constexpr int multipleResets = 9;
constexpr int spiWakeUp = 13;
constexpr int forcedWakeUp = 14;
// and of MODE
constexpr std::uint64_t stateMask = 0xF8;
constexpr int stateShift = 3;
constexpr int safeActive = 8;

constexpr std::uint64_t bits(std::uint64_t word, int low, int count) {
    return word >> low & ((std::uint64_t{1} << count) - 1);
}
std::int64_t scaled(double mantissa, std::uint64_t exponent) {
    return static_cast<std::int64_t>(mantissa * millisecond) << exponent;
}

class Part : public ModelPart {
public:
    explicit Part(ModelStore& store)
        : store_(store),
          init_(store.owner("INIT")),
          timer_(store.owner("TIMER")),
          special_(store.owner("SPE_MODE")),
          mode_(store.owner("MODE")),
          interrupt_(store.owner("Interrupt")),
          interruptFlags_(flagsOf("Interrupt")),
          modeFlags_(flagsOf("MODE")),
          passcode_(passcodeOf(store.chip())) {
        store_.of(store_.owner("Passcode")) = revision;
        enter(State::Init);
    }

    void timeIs(std::int64_t now) override;
    [[nodiscard]] ChipLines lines() const override {
        return {.interrupt = interruptFlags_ != 0, .reset = state_ == State::Reset};
    }
    void addPhase(Phase& phase) const override {
        for (const std::int64_t due : {watchdogDue_, wakeUpDue_, resetEnds_})
            phase.push_back(due == never ? never : due - now_);
        phase.push_back(static_cast<std::int64_t>(state_));
        phase.push_back(now_ - refreshedAt_);
    }
    void skip(std::int64_t duration) override {
        now_ += duration;
        refreshedAt_ += duration;
        for (std::int64_t* due : {&watchdogDue_, &wakeUpDue_, &resetEnds_})
            *due += *due == never ? 0 : duration;
    }
    DongleServices dongleServices() override {
        DongleServices services;
        services.push_back(std::make_unique<RefreshService>());
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

    [[nodiscard]] std::optional<std::uint64_t> status() const override;
    [[nodiscard]] std::optional<std::uint64_t> shown(const chips::View& view) const override;
    [[nodiscard]] std::uint64_t answer(std::uint64_t word, std::uint64_t answer) const override {
        return word >> 24 == refreshAddress ? (answer & ~std::uint64_t{0xFFFFFF}) | refreshCode_
                                            : answer;
    }
    void addSwitches(SwitchTable& table) override {
        table.add("Status", store_.chip().word.status.captions, store_.status);
    }
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    enum class State : std::uint8_t { Reset, Init, Flash, Normal, On, Off };

    std::uint64_t& flagsOf(const char* title) {
        const chips::Register& owner = store_.owner(title);
        for (const chips::View& view : owner.views)
            if (view.operation == chips::Operation::Flags)
                return store_.of(owner, view);
        throw Failure(Failure::Kind::File, fmt::format("{} has no flags", title));
    }
    [[nodiscard]] std::uint64_t flags(const char* title, std::uint64_t extra = 0) const {
        const chips::Register& owner = store_.owner(title);
        for (const chips::View& view : owner.views)
            if (view.operation == chips::Operation::Flags && view.extra == extra)
                return store_.of(owner, view);
        return 0;
    }
    static std::uint64_t passcodeOf(const chips::Chip& chip) {
        for (const chips::Command& any : chip.commands)
            if (chip.word.address.taken(any.word) == passcodeAddress)
                return chip.word.data.taken(any.word);
        throw Failure(Failure::Kind::File, "The chip has no passcode");
    }

    std::uint8_t draw() { return static_cast<std::uint8_t>(random_() >> 8U); }
    static void set(std::uint64_t& word, int bit) { word |= std::uint64_t{1} << bit; }
    [[nodiscard]] std::uint64_t init() const { return store_.of(init_); }
    [[nodiscard]] std::int64_t period() const;
    void enter(State state);
    void reset();
    void failRefresh();
    void refresh(std::uint64_t data);
    void select(std::uint64_t data);
    void changeMode(std::uint64_t data);
    void wake(int flag);

    ModelStore& store_;
    const chips::Register& init_;
    const chips::Register& timer_;
    const chips::Register& special_;
    const chips::Register& mode_;
    const chips::Register& interrupt_;
    std::uint64_t& interruptFlags_;
    std::uint64_t& modeFlags_;
    const std::uint64_t passcode_;

    std::minstd_rand random_; // the same codes come at every run
    std::uint64_t code_ = draw();
    std::optional<std::uint64_t> expected_; ///< by SPE_MODE
    std::uint64_t refreshCode_ = draw();
    std::uint64_t modeCode_ = 0; ///< with which low power was selected
    State state_ = State::Init;
    bool inhibited_ = true;
    int failures_ = 0; ///< resets by the watchdog since the last refresh
    std::size_t step_ = 0;
    std::int64_t now_ = 0;
    std::int64_t refreshedAt_ = 0;
    std::int64_t watchdogDue_ = never;
    std::int64_t wakeUpDue_ = never;
    std::int64_t resetEnds_ = never;
};

// Modes and the watchdog

void Part::enter(State state) {
    state_ = state;
    step_ = 0;
    refreshedAt_ = now_;
    wakeUpDue_ = resetEnds_ = never;
    modeFlags_ = (modeFlags_ & ~stateMask) | static_cast<std::uint64_t>(state) << stateShift;
    watchdogDue_ = period() > 0 ? now_ + period() : never;
}

std::int64_t Part::period() const {
    const std::uint64_t timer = store_.of(timer_);
    constexpr std::array normal{2.5, 3.0, 3.5, 4.0};
    if (inhibited_ && bits(init(), 16, 3) == 0)
        return 0;
    if (state_ == State::Normal)
        return scaled(normal.at(bits(timer, 3, 2)), bits(timer, 0, 3));
    if (state_ == State::Flash)
        return scaled(bits(timer, 23, 1) != 0 ? 256 : 48, bits(timer, 20, 3));
    if (state_ == State::On && (modeCode_ & 1) != 0)
        return scaled(bits(timer, 23, 1) != 0 ? 16 : 12, bits(timer, 20, 3));
    return 0;
}

void Part::timeIs(std::int64_t now) {
    for (;;) {
        const std::int64_t due = std::min({watchdogDue_, wakeUpDue_, resetEnds_});
        if (due > now)
            break;
        now_ = std::max(now_, due);
        if (resetEnds_ <= now_)
            enter(State::Init);
        else if (wakeUpDue_ <= now_)
            wake(forcedWakeUp);
        else
            failRefresh();
    }
    now_ = std::max(now_, now);
}

void Part::reset() {
    constexpr std::array durations{1, 5, 10, 20};
    enter(State::Reset);
    resetEnds_ = now_ + scaled(durations.at(bits(init(), 3, 2)), 0);
}

void Part::failRefresh() {
    constexpr std::array limits{1, 2, 3, 5};
    set(interruptFlags_, refreshFailed);
    if (++failures_ > 1)
        set(interruptFlags_, multipleResets);
    if (failures_ >= limits.at(bits(init(), 11, 2)))
        set(modeFlags_, safeActive);
    reset();
}

void Part::refresh(std::uint64_t data) {
    const auto steps = zt72518::refreshSteps(static_cast<zt72518::RefreshMode>(bits(init(), 9, 2)));
    const bool early =
        bits(init(), 8, 1) != 0 && state_ == State::Normal && now_ - refreshedAt_ < period() / 2;
    const std::uint64_t mask = steps[step_];
    const bool good = data == (mask & ~refreshCode_ & 0xFF);
    if ((early || !good) && watchdogDue_ != never)
        return failRefresh();
    if (!good || ++step_ < steps.size())
        return;
    failures_ = 0;
    refreshCode_ = draw();
    enter(state_ == State::Init ? State::Normal : state_);
}

void Part::select(std::uint64_t data) {
    const bool good = expected_ == (data & 0xFF);
    expected_.reset();
    if (!good)
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
    constexpr std::uint64_t wakeCode = 2;
    constexpr std::uint64_t firstOff = 0x0C;
    constexpr std::uint64_t firstOn = 0x10;
    const std::uint64_t mode = bits(data, 3, 5);
    if (state_ == State::On && mode == wakeCode)
        return wake(spiWakeUp);
    if (state_ != State::Normal || mode < firstOff ||
        (bits(init(), 23, 1) != 0 && (data & 7) != (~code_ & 7)))
        return;
    modeCode_ = mode;
    enter(mode < firstOn ? State::Off : State::On);
    const std::uint64_t timer = store_.of(timer_);
    if (bits(mode, mode < firstOn ? 1 : 3, 1) != 0)
        wakeUpDue_ = now_ + scaled(bits(timer, 19, 1) != 0 ? 64 : 48, bits(timer, 16, 3));
}

void Part::wake(int flag) {
    set(interruptFlags_, flag);
    enter(State::Normal);
}

// Words

bool Part::accepts(const Request& request) {
    if (request.operation != chips::Operation::Write)
        return true;
    std::uint64_t& passed = store_.of(store_.owner("Passcode"));
    if (request.address == refreshAddress)
        refresh(request.data);
    else if (request.address == safeAddress)
        modeFlags_ &= ~(std::uint64_t{1} << safeActive);
    else if (request.address == inhibitAddress) {
        inhibited_ = false;
        enter(state_);
    } else if (request.address == passcodeAddress)
        passed = revision | (request.data == passcode_ ? 1U : 0U);
    return request.address < firstTestAddress || (passed & 1) != 0;
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
        return (state_ == State::On ? modeCode_ : number) << stateShift | (code_ & 7);
    return std::nullopt;
}

/// INTb first, SG-G last.
std::optional<std::uint64_t> Part::status() const {
    const std::uint64_t regulator = flags("Regulator");
    const std::uint64_t can = flags("CAN01") | flags("CAN01", 0x800000);
    const std::uint64_t lin01 = flags("LIN01");
    const std::uint64_t lin23 = flags("LIN23");
    constexpr std::uint64_t prevents = 0xFC000; ///< VPRE among the flags of Regulator
    constexpr std::uint64_t hot = 0x8020;
    constexpr std::uint64_t linWakeUps = 0x4040;
    constexpr std::uint64_t linHot = 0x1010;
    std::uint64_t word = 0;
    for (const bool bit :
         {interruptFlags_ != 0,
          (interruptFlags_ & 0x6000) != 0 || (can & 0x80) != 0 ||
              ((lin01 | lin23) & linWakeUps) != 0,
          state_ == State::Reset || (interruptFlags_ & 0x0E64) != 0,
          (regulator & hot) != 0 || (can & 0x20) != 0 || ((lin01 | lin23) & linHot) != 0 ||
              (interruptFlags_ & 1) != 0,
          (can | lin01 | lin23) != 0, (regulator & prevents) != 0, (regulator & ~prevents) != 0,
          bits(modeFlags_, safeActive, 1) != 0 || bits(interruptFlags_, 1, 1) != 0, lin23 != 0,
          lin01 != 0, can != 0, false})
        word = word << 1 | (bit ? 1 : 0);
    return word << 20;
}

std::vector<Reading> Part::readings() const {
    constexpr std::array names{
        "Reset", "Init", "Flash", "Normal", "Low power VDD on", "Low power VDD off"};
    return {{"State", "Mode", names.at(static_cast<std::size_t>(state_))},
            {"State", "Watchdog",
             watchdogDue_ == never
                 ? "off"
                 : fmt::format("{:.1f} ms left",
                               static_cast<double>(watchdogDue_ - now_) / millisecond)},
            {"State", "Test mode",
             bits(store_.of(store_.owner("Passcode")), 0, 1) != 0 ? "on" : "off"}};
}

} // namespace

std::unique_ptr<ModelPart> makePart(ModelStore& store) {
    return std::make_unique<Part>(store);
}

} // namespace bitlux::zt72516
