#include "bench/zt72516/zt72516.h"

#include "bench/model/chip_modes.h"
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
constexpr int refreshFailure = 8;
constexpr int multipleResets = 9;
constexpr int spiWakeUp = 13;
constexpr int forcedWakeUp = 14;
// and of MODE
constexpr int firstState = 3;
constexpr int stateBits = 5;
constexpr int safeActive = 8;

struct ModeRow {
    const char* name;
    std::uint8_t state; ///< as the chip reports it
};
using Mode = ChipModes::Mode;
constexpr std::array<ModeRow, 7> modeRows{{{"Init", 1},
                                           {"Flash", 2},
                                           {"", 0}, // the chip has no such mode
                                           {"Normal", 3},
                                           {"Low power VDD on", 4},
                                           {"Low power VDD off", 5},
                                           {"Reset", 0}}};

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

class Part : public ModelPart, private ChipModes::Rules {
public:
    explicit Part(ModelStore& store)
        : store_(store),
          init_(store.of(store.owner("INIT"))),
          timer_(store.of(store.owner("TIMER"))),
          special_(store.owner("SPE_MODE")),
          mode_(store.owner("MODE")),
          interrupt_(store.owner("Interrupt")),
          passcode_(store.owner("Passcode")),
          interruptFlags_(store.flags("Interrupt_Flag")),
          modeFlags_(store.flags("MODE_Flags")) {
        modes_.enter(Mode::Init);
    }

    void timeIs(std::int64_t now) override { modes_.timeIs(now); }
    [[nodiscard]] ChipLines lines() const override {
        return {.interrupt = interruptFlags_ != 0, .reset = modes_.mode() == Mode::Reset};
    }
    void addPhase(Phase& phase) const override {
        modes_.addPhase(phase);
        phase.insert(phase.end(), {code_, refreshCode_});
    }
    void skip(std::int64_t duration) override { modes_.skip(duration); }
    DongleServices dongleServices() override {
        DongleServices services;
        services.push_back(std::make_unique<RefreshService>(refreshes));
        return services;
    }

    [[nodiscard]] bool listens() const override { return modes_.listens(); }
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
        if (modes_.inLowPower() && bit.isOn() && (store_.summaryOf(bit) & wakeUpSummary) != 0)
            modes_.enter(Mode::Normal);
    }
    [[nodiscard]] std::vector<Reading> readings() const override {
        return {{"State", "Mode", row().name},
                {"State", "Watchdog", modes_.watchdogLeft()},
                {"State", "Test mode", inTestMode() ? "on" : "off"}};
    }

private:
    [[nodiscard]] std::int64_t period(Mode mode) const override;
    [[nodiscard]] RefreshMode refreshMode() const override {
        return static_cast<RefreshMode>(bits(init_, 9, 2));
    }
    [[nodiscard]] bool hasWindow() const override { return bits(init_, 8, 1) != 0; }
    [[nodiscard]] std::int64_t resetTime() const override { return resetDuration(init_ >> 3); }
    [[nodiscard]] std::int64_t wakeUpTime() const override {
        return forcedWakeUpPeriod(timer_ >> 16);
    }
    void entered(Mode) override {
        modeFlags_ ^= (bits(modeFlags_, firstState, stateBits) ^ row().state) << firstState;
    }
    void refreshFailed() override;
    void woken(bool byTimer) override {
        set(interruptFlags_, byTimer ? forcedWakeUp : spiWakeUp);
        modes_.enter(Mode::Normal);
    }

    std::uint8_t draw() { return static_cast<std::uint8_t>(random_() >> 8U); }
    static void set(std::uint64_t& word, int bit) { word |= std::uint64_t{1} << bit; }
    [[nodiscard]] const ModeRow& row() const {
        return modeRows[static_cast<std::size_t>(modes_.mode())];
    }
    [[nodiscard]] bool inTestMode() const { return (store_.of(passcode_) & 1) != 0; }
    void select(std::uint64_t data);
    void changeMode(std::uint64_t data);

    ModelStore& store_;
    const std::uint64_t& init_;
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
    bool inhibited_ = true;
    ChipModes modes_{*this, Mode::Init};
};

// Modes and the watchdog

std::int64_t Part::period(Mode mode) const {
    const std::uint64_t longPeriod = bits(timer_, 20, 4);
    if (inhibited_ && bits(init_, 16, 3) == 0)
        return 0;
    if (mode == Mode::Normal)
        return watchdogPeriod(timer_);
    if (mode == Mode::Flash)
        return flashPeriod(longPeriod);
    return mode == Mode::LowPowerOn && modes_.lowPower().hasWatchdog() ? lowPowerPeriod(longPeriod)
                                                                       : 0;
}

void Part::refreshFailed() {
    constexpr std::array limits{1, 2, 3, 5};
    if (!modes_.watchdogRuns())
        return;
    set(interruptFlags_, refreshFailure);
    if (modes_.failures() > 0)
        set(interruptFlags_, multipleResets);
    if (modes_.failures() + 1 >= limits.at(bits(init_, 11, 2)))
        set(modeFlags_, safeActive);
    modes_.fail();
}

void Part::select(std::uint64_t data) {
    if (std::exchange(expected_, std::nullopt) != (data & 0xFF))
        return;
    switch (bits(data, 8, 3)) {
    case 0:
        set(interruptFlags_, resetRequest);
        return modes_.reset();
    case 1:
        return modes_.enter(Mode::Init);
    case 2:
        return modes_.enter(Mode::Flash);
    case 3:
        for (const char* title : {"SGWU", "SGFS", "SGWUD", "SGM0", "SGM1", "SGMT", "SGT"})
            store_.of(store_.owner(title)) = store_.owner(title).reset;
        return;
    default:
        return;
    }
}

void Part::changeMode(std::uint64_t data) {
    const LowPowerCode code{bits(data, firstState, stateBits)};
    const bool wantsCode = bits(init_, 23, 1) != 0 && !code.wakes();
    if (!wantsCode || ((data ^ ~code_) & 7) == 0)
        modes_.select(code, true);
}

// Words

bool Part::accepts(const Request& request) {
    if (request.operation != chips::Operation::Write)
        return true;
    if (request.address == refreshAddress) {
        if (modes_.refresh(request.data, refreshCode_))
            refreshCode_ = draw();
    } else if (request.address == safeAddress) {
        modeFlags_ &= ~(std::uint64_t{1} << safeActive);
    } else if (request.address == inhibitAddress) {
        inhibited_ = false;
        modes_.restartWatchdog();
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
    const std::uint64_t state = row().state;
    if (view.address == special_.address)
        return state << 8 | code_;
    if (view.address == mode_.address)
        return (modes_.mode() == Mode::LowPowerOn ? modes_.lowPower().code : state) << firstState |
               (code_ & 7);
    return std::nullopt;
}

} // namespace

std::unique_ptr<ModelPart> makePart(ModelStore& store) {
    return std::make_unique<Part>(store);
}

} // namespace bitlux::zt72516
