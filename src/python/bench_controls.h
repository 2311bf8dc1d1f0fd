#pragma once

#include "bench/dongle_fault.h"
#include "workbench/virtual_bench.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bitlux {

/// The virtual bench for a script: what its device answers, and what goes wrong. Each change raises
/// Failure (OutOfRange) once the bench is closed.
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
    /// Further faults of dongle and adapter by their texts (dongleFaultFrom); the count of frames
    /// and words restarts.
    void setFaults(const std::vector<std::string>& faults, std::uint32_t seed);

    void plug();
    void unplug();
    void plugAdapter();
    void unplugAdapter();
    void setLines(bool interrupt, bool reset);

    [[nodiscard]] const VirtualBench& bench() const { return bench_; }
    [[nodiscard]] bool isAdapterPlugged() const { return bench_.adapter.plugged(); }
    /// Whether the bench is closed; open when it is not set.
    std::function<bool()> isClosed;
    /// Raises Failure (OutOfRange) when it is.
    void demandOpen() const;

private:
    /// The bench, to be changed.
    [[nodiscard]] VirtualBench& changed();
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

} // namespace bitlux
