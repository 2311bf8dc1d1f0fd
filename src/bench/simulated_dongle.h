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

/// A dongle with a device on its SPI lines, and the USB socket it is plugged into. It takes frames
/// as a real one does: a word is clocked into the device as the frame tells, and the answer goes
/// back in one frame; a command is carried out. Whoever opens it cannot tell it from a real one.
/// This is its USB side; DongleBoard is what carries the frames out.
class SimulatedDongle : public UsbHost {
public:
    /// What a frame takes on the bus, in nanoseconds: a frame of full-speed USB in each direction.
    static constexpr std::int64_t transferTime = 1'000'000;

    /// Starts unplugged. `clock` outlives this.
    SimulatedDongle(BenchClock& clock, std::shared_ptr<Device> device);

    /// How the device is wired for an SPI type, 1 to 8; asked for every word. Length and
    /// polarities come with the frame.
    void setWiring(std::function<BusShape(int type)> wiring) {
        board_.setWiring(std::move(wiring));
    }
    /// Puts another device on the lines; the dongle then has the services of that one.
    void connect(std::shared_ptr<Device> device) { board_.connect(std::move(device)); }

    void plug();
    /// Takes it out of the socket; connections that were open find it gone.
    void unplug();
    [[nodiscard]] bool plugged() const { return plugged_; }

    /// What goes wrong from now on; frames are counted anew.
    void setFaults(DongleFaults faults) { faults_ = std::move(faults); }

    /// The answers to the coming commands, of which the last one stays; with none the dongle
    /// answers by itself.
    void answerCommandsWith(std::vector<UsbFrame> answers) {
        board_.answerCommandsWith(std::move(answers));
    }

    /// The device on the lines when it is a chip, else null.
    [[nodiscard]] Chip* chip() const { return board_.chip(); }
    /// Lets happen what was due by now on the dongle and in the chip: refreshes of the watchdog, a
    /// wake-up, the return of a dongle. Every frame does so first; whoever looks at either asks.
    void catchUp();

    /// Holds the interrupt and reset lines, whatever the chip does with them.
    void setLines(bool interrupt, bool reset) { board_.setLines(interrupt, reset); }
    /// The extra pins, bit 0 to 4 for Data 0 to Data 4, bit 5 to 8 for Control 0 to Control 3. They
    /// keep their levels from one frame that carries a change to the next.
    [[nodiscard]] std::uint16_t extraPins() const { return board_.extraPins(); }
    /// How often a frame asked for a pulse on the trigger output.
    [[nodiscard]] int triggers() const { return board_.triggers(); }
    /// What it does by itself, for people to look at.
    [[nodiscard]] std::vector<Reading> readings() const { return board_.readings(); }
    /// The last frames that went through, all zeros at first.
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
    bool refused_ = false; ///< the frame that came last; the next read tells
    bool babbles_ = false;
    UsbFrame lastOut_{};
    UsbFrame lastIn_{};
};

} // namespace bitlux
