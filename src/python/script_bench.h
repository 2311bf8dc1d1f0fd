#pragma once

#include "bench/bench_clock.h"
#include "bench/chosen_marker_files.h"
#include "bench/interruptible.h"
#include "bench/scripted_desk.h"
#include "platform/event.h"
#include "platform/hardware.h"
#include "platform/linux/linux_hardware.h"
#include "program/program.h"
#include "program/word_settings.h"
#include "python/bench_controls.h"
#include "python/bench_lock.h"
#include "python/wire_ring.h"
#include "workbench/virtual_bench.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// A word or an answer; element i is bit i.
using WordElements = std::vector<std::int16_t>;

/// The state of a bench when its program starts.
struct BenchSetup {
    std::string device = "loopback";
    std::optional<Bus> bus; ///< prepares the program for sending, without sending anything
    WordSettings words;     ///< in force after that
    std::string config;     ///< a file that prepares it; it chooses the bus where `bus` does not
    std::vector<std::int16_t> ports{address378}; ///< the addresses of LPT1, LPT2 and so on
    bool dongle = false;             ///< whether one is plugged in; always for the bus "dongle"
    bool adapter = false;            ///< whether one is plugged in; always for the bus "ftdi"
    std::optional<int> adapterClock; ///< bytes a second
    std::string commandLine;
    std::vector<std::string> markers; ///< marker files that exist
    std::vector<MessageBox::Answer> answers;
    bool realTime = false;
};

/// What the program is prepared for when it starts on the hardware of this machine.
struct HardwareSetup {
    std::optional<Bus> bus; ///< by default the dongle if there is one, else the port
    HardwareChoice choice;
    WordSettings words;
    std::string config; ///< as that of BenchSetup
};

/// The program for a script: without a window, on the virtual bench or on hardware, with scripted
/// answers to boxes and dialogs.
class ScriptBench {
public:
    /// `lock` is released while the interruption sleeps. Raises Failure (PortUnusable, LinkFailed)
    /// when the program cannot be prepared for sending.
    ScriptBench(BenchSetup setup, Interruption interruption, std::shared_ptr<BenchLock> lock);
    ScriptBench(const HardwareSetup& setup, Interruption interruption,
                std::shared_ptr<BenchLock> lock);
    ~ScriptBench();
    ScriptBench(const ScriptBench&) = delete;
    ScriptBench& operator=(const ScriptBench&) = delete;

    /// Runs an action of the script. If an input handler failed meanwhile, its exception is raised
    /// at the end; its box was shown.
    template <typename Action>
    auto act(Action&& action) {
        const std::size_t before = failures_.size();
        if constexpr (std::is_void_v<decltype(action())>) {
            std::forward<Action>(action)();
            raiseFailure(before);
        } else {
            auto result = std::forward<Action>(action)();
            raiseFailure(before);
            return result;
        }
    }

    /// Lets time pass, with all due events.
    void runFor(double milliseconds);
    /// Runs `action` after this time, also within a call.
    void at(double milliseconds, std::function<void()> action);
    [[nodiscard]] double milliseconds() const;

    /// Sends words of this number of bits, without changing the settings, and appends their answers
    /// to `answers`; element i of a word is bit i. 0 means the present length or type.
    ///
    /// Raises Failure: OutOfRange for an impossible shape, with nothing sent; LinkFailed or
    /// PortUnusable with the text of the message when a word fails.
    void transfer(std::vector<WordElements> words, int bits, int type,
                  std::vector<WordElements>& answers);
    /// Sends a word by `send`, which raises Failure when it is not answered. The failure then has
    /// the text of the message, and the kind of the bus.
    std::uint64_t answered(const std::function<std::uint64_t()>& send);
    /// Both raise Failure with the text of the message when the file was not opened or saved
    /// completely.
    void open(const std::string& fileName);
    void save(const std::string& fileName);

    [[nodiscard]] Program& program() { return *program_; }
    [[nodiscard]] ScriptedBoxes& boxes() { return boxes_; }
    [[nodiscard]] ScriptedFileDialogs& fileDialogs() { return fileDialogs_; }
    [[nodiscard]] WireRing& trace() { return trace_; }
    [[nodiscard]] bool recording() const { return recording_; }
    void record(bool on);
    /// Raises Failure (File) when the journal ended before its time.
    void endJournal();
    [[nodiscard]] BenchLock& lock() { return *lock_; }
    [[nodiscard]] bool onHardware() const { return hardware_ != nullptr; }
    /// Null on hardware.
    [[nodiscard]] BenchControls* bench() { return controls_.get(); }

    /// The number of forms that were destroyed: a control that was found before may be invalid
    /// after a change.
    [[nodiscard]] int generation() const { return generation_; }

private:
    void setUpAdapter();
    void start(const Hardware& hardware);
    void makeReady(std::optional<Bus> bus, const std::string& config, const WordSettings& words);
    void chooseBusOrRaise(std::optional<Bus> bus);
    void openSettings(std::optional<Bus> bus, const std::string& config);
    [[nodiscard]] std::string refusal() const;
    WordElements transferWord(WordElements word);
    void raiseFailure(std::size_t before);
    /// Sets the clock pin to the idle level of the type in force.
    void restClock();
    [[nodiscard]] std::string lastMessage(std::size_t before) const;

    std::shared_ptr<BenchLock> lock_;
    BenchSetup setup_;
    ChosenMarkerFiles markers_{setup_.markers};
    Interruption interruption_;
    std::unique_ptr<BenchClock> clock_;
    std::unique_ptr<VirtualBench> bench_;
    std::unique_ptr<LinuxHardware> hardware_;
    std::unique_ptr<InterruptibleUsbHost> usb_;
    std::unique_ptr<BenchControls> controls_;
    ScriptedBoxes boxes_;
    ScriptedFileDialogs fileDialogs_;
    QuietPointer pointer_;
    std::unique_ptr<InterruptibleLoop> loop_;
    WireRing trace_;
    std::vector<std::exception_ptr> failures_; ///< of input handlers
    std::unique_ptr<Program> program_;
    bool recording_ = false;
    int generation_ = 0;
};

} // namespace bitlux
