#pragma once

#include "bench/bench_clock.h"
#include "bench/chosen_marker_files.h"
#include "bench/interruptible.h"
#include "bench/scripted_desk.h"
#include "platform/event.h"
#include "platform/hardware.h"
#include "program/program.h"
#include "transfer/wire_trace.h"
#include "workbench/virtual_bench.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// What a bench offers when its program starts.
struct BenchSetup {
    std::string device = "loopback";
    /// "dongle" or "port" makes the program ready to send on it, as the window of the bench does;
    /// nothing leaves it as it starts.
    std::optional<std::string> bus;
    std::vector<std::int16_t> ports{address378}; ///< the addresses of LPT1, LPT2 and so on
    bool dongle = false; ///< whether one is plugged in; so it is for its bus
    std::string commandLine;
    std::vector<std::string> markers; ///< marker files that are there
    std::vector<MessageBox::Answer> answers;
    bool realTime = false;
};

/// The virtual bench in the hands of a script: what its device answers, and what goes wrong.
class BenchControls {
public:
    BenchControls(VirtualBench& bench, std::string device);

    [[nodiscard]] const std::string& device() const { return device_; }
    /// Raises Failure (OutOfRange) for a name that no device has.
    void connect(const std::string& device);

    [[nodiscard]] const std::vector<Reply>& replies() const { return replies_; }
    /// Raises Failure (OutOfRange) unless the device is "scripted".
    void setReplies(std::vector<Reply> replies);

    [[nodiscard]] const std::vector<UsbFrame>& commandReplies() const { return commandReplies_; }
    void setCommandReplies(std::vector<UsbFrame> replies);

    [[nodiscard]] bool silent() const { return silent_; }
    void setSilent(bool silent);
    [[nodiscard]] double lateMilliseconds() const { return late_; }
    void setLateMilliseconds(double milliseconds);
    /// Further faults by their texts (dongleFaultFrom); frames are counted anew.
    void setFaults(const std::vector<std::string>& faults, std::uint32_t seed);

    [[nodiscard]] VirtualBench& bench() { return bench_; }

private:
    void applyFaults();

    VirtualBench& bench_;
    std::string device_;
    std::vector<Reply> replies_;
    std::vector<UsbFrame> commandReplies_;
    std::vector<DongleFault> faults_;
    std::uint32_t seed_ = 1;
    double late_ = 0;
    bool silent_ = false;
};

/// The program in the hands of a script: without a window, on the virtual bench or on hardware,
/// with scripted answers to boxes and dialogs.
class ScriptBench {
public:
    ScriptBench(BenchSetup setup, Interruption interruption);
    /// On the hardware of this machine.
    explicit ScriptBench(Interruption interruption);
    ~ScriptBench();
    ScriptBench(const ScriptBench&) = delete;
    ScriptBench& operator=(const ScriptBench&) = delete;

    /// Runs what the script does. When something that a hand started has failed meanwhile, its text
    /// is raised as Failure in the end; the box that tells so has been shown.
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

    /// Time passes, with all that happens in it.
    void runFor(double milliseconds);
    /// `action` runs when so much time has passed, also within a call that lasts.
    void at(double milliseconds, std::function<void()> action);
    [[nodiscard]] double milliseconds() const;

    /// Sends a word of so many bits, without touching the settings, and returns its answer, element
    /// i being bit i. Raises Failure with the text of the message when it does not go through. 0
    /// stands for the present length or type.
    std::vector<std::int16_t> transfer(std::vector<std::int16_t> word, int bits, int type);
    /// Both raise Failure with the text of the message when the file was not opened or saved whole.
    void open(const std::string& fileName);
    void save(const std::string& fileName);

    [[nodiscard]] Program& program() { return *program_; }
    [[nodiscard]] ScriptedBoxes& boxes() { return boxes_; }
    [[nodiscard]] ScriptedFileDialogs& fileDialogs() { return fileDialogs_; }
    [[nodiscard]] WireTrace& trace() { return trace_; }
    [[nodiscard]] bool recording() const { return recording_; }
    void record(bool on);
    /// Null on hardware.
    [[nodiscard]] BenchControls* bench() { return controls_.get(); }

    /// Counts the forms that have gone: a control that was found before may be gone with one.
    [[nodiscard]] int generation() const { return generation_; }

private:
    struct RealHardware;

    void start(const Hardware& hardware);
    void makeReady();
    void raiseFailure(std::size_t before);
    /// The clock idles as the type in force wants it.
    void restClock();
    [[nodiscard]] std::string lastMessage(std::size_t before) const;

    BenchSetup setup_;
    ChosenMarkerFiles markers_{setup_.markers};
    Interruption interruption_;
    std::unique_ptr<BenchClock> clock_;
    std::unique_ptr<VirtualBench> bench_;
    std::unique_ptr<RealHardware> real_;
    std::unique_ptr<InterruptibleUsbHost> usb_;
    std::unique_ptr<BenchControls> controls_;
    ScriptedBoxes boxes_;
    ScriptedFileDialogs fileDialogs_;
    QuietPointer pointer_;
    std::unique_ptr<InterruptibleLoop> loop_;
    WireTrace trace_;
    std::vector<std::string> failures_; ///< of what hands started
    std::unique_ptr<Program> program_;
    bool recording_ = false;
    int generation_ = 0;
};

} // namespace bitlux
