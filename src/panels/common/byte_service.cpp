#include "panels/common/byte_service.h"

#include "platform/dongle_commands.h"
#include "transfer/dongle_frame.h"

namespace bitlux {

void commandByteService(const PanelSurroundings& outside, const ByteService& service,
                        ServiceNote& note) {
    if (!outside.session.USBReady)
        return;
    UsbFrame frame = commandFrame(dongle::serveByte);
    frame[3] = frameByte(service.state);
    frame[4] = frameByte(service.word);
    frame[5] = frameByte(service.period);
    frame[6] = service.chip;
    UsbFrame answer{};
    note.commanded(service.state != 0,
                   outside.dongle.exchange(frame, answer, DongleLink::Wait::Limited));
}

} // namespace bitlux
