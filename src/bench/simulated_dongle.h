#pragma once

#include "bench/dongle_board.h"
#include "bench/dongle_fault.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace bitlux {

/// A dongle with a device on its SPI lines, and the USB socket it is plugged into. It accepts
/// frames as a real one does: a word is clocked into the device as the frame defines, and the
/// answer is returned in one frame; a command is executed. Its user cannot distinguish it from a
/// real one. This is its USB side; DongleBoard executes the frames.
class SimulatedDongle : public UsbHost {
public:
    /// Duration of a frame on the bus, in nanoseconds: a frame of full-speed USB in each direction.
    static constexpr std::int64_t transferTime = 1'000'000;

    /// Starts unplugged. `clock` outlives this.
    SimulatedDongle(BenchClock& clock, std::shared_ptr<Device> device);

    /// The wiring of the device for an SPI type, 1 to 8; queried for every word. Length and
    /// polarities come with the frame.
    void setWiring(std::function<BusShape(int type)> wiring) {
        board_.setWiring(std::move(wiring));
    }
    /// Connects another device; the dongle then has the services of that one.
    void connect(std::shared_ptr<Device> device) { board_.connect(std::move(device)); }

    void plug();
    /// Unplugs it; open connections find it gone.
    void unplug();
    [[nodiscard]] bool plugged() const { return plugged_; }

    /// The faults from now on; the count of frames restarts.
    void setFaults(DongleFaults faults) { faults_ = std::move(faults); }

    /// The answers to the next commands; the last one repeats. Without any, the dongle answers by
    /// itself.
    void answerCommandsWith(std::vector<UsbFrame> answers) {
        board_.answerCommandsWith(std::move(answers));
    }

    /// The device on the lines when it is a chip, else null.
    [[nodiscard]] Chip* chip() const { return board_.chip(); }
    /// Catches up with everything due by now on the dongle and in the chip: refreshes of the
    /// watchdog, a wake-up, the return of a dongle. Every frame does so first; callers that display
    /// either must call it.
    void catchUp();

    /// Forces the interrupt and reset lines, whatever the chip drives.
    void setLines(bool interrupt, bool reset) { board_.setLines(interrupt, reset); }
    /// The extra pins, bit 0 to 4 for Data 0 to Data 4, bit 5 to 8 for Control 0 to Control 3. They
    /// keep their levels until the next frame with a change.
    [[nodiscard]] std::uint16_t extraPins() const { return board_.extraPins(); }
    /// How often a frame requested a pulse on the trigger output.
    [[nodiscard]] int triggers() const { return board_.triggers(); }
    /// Readings of its periodic actions, for display.
    [[nodiscard]] std::vector<Reading> readings() const { return board_.readings(); }
    /// The last frames in both directions, all zeros at first.
    [[nodiscard]] const UsbFrame& lastOut() const { return lastOut_; }
    [[nodiscard]] const UsbFrame& lastIn() const { return lastIn_; }

    std::unique_ptr<UsbEndpoint> makeEndpoint() override;

private:
    friend class SimulatedEndpoint;

    struct Answer {
        std::int64_t due;
        UsbFrame frame;
        int bytes;
    };

    UsbStatus take(const UsbFrame& frame);
    UsbStatus give(UsbFrame& frame, std::int64_t wait);

    BenchClock& clock_;
    DongleBoard board_;
    DongleFaults faults_;
    bool plugged_ = false;
    int plugging_ = 0; ///< counts how often it was plugged in, so that old connections stay broken
    std::int64_t backAt_ = 0; ///< when it comes back, 0 for never
    std::deque<Answer> answers_;
    bool refused_ = false; ///< the last frame; the next read reports it
    bool babbles_ = false;
    UsbFrame lastOut_{};
    UsbFrame lastIn_{};
};

} // namespace bitlux
