#include "emulated_parport.h"

#include <cerrno>
#include <filesystem>

#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <fmt/format.h>

namespace bitlux::test {

namespace {

std::uint8_t firstByte(UMockdevIoctlData* data) {
    guint8* bytes = nullptr;
    gint length = 0;
    umockdev_ioctl_data_retrieve(data, &bytes, &length);
    const std::uint8_t value = bytes[0];
    g_free(bytes);
    return value;
}

/// The byte that the argument of a request points to.
class PointedByte {
public:
    explicit PointedByte(UMockdevIoctlClient* client)
        : data_(umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, 1, nullptr)) {
    }
    ~PointedByte() { umockdev_ioctl_data_unref(data_); }
    PointedByte(const PointedByte&) = delete;
    PointedByte& operator=(const PointedByte&) = delete;

    [[nodiscard]] std::uint8_t get() const { return firstByte(data_); }
    void set(std::uint8_t value) { umockdev_ioctl_data_update(data_, 0, &value, 1); }

private:
    UMockdevIoctlData* data_;
};

} // namespace

EmulatedParport::EmulatedParport(const Testbed& testbed, int number)
    : EmulatedNode(testbed, fmt::format("/dev/parport{}", number),
                   fmt::format("P: /devices/parport{0}\nN: parport{0}\nE: DEVNAME=/dev/parport{0}\n"
                               "E: SUBSYSTEM=ppdev\n\n",
                               number)) {}

void EmulatedParport::takeAway() const {
    std::filesystem::rename(file(), file() + ".removed");
}

void EmulatedParport::bringBack() const {
    std::filesystem::rename(file() + ".removed", file());
}

int EmulatedParport::answer(UMockdevIoctlClient* client, unsigned long request) {
    if (const std::optional<int> error = injectedError(request))
        return *error;
    if (request == PPEXCL)
        return 0;
    if (request == PPCLAIM)
        return claim(client);
    return holder_ == client ? access(client, request) : -EINVAL;
}

int EmulatedParport::claim(UMockdevIoctlClient* client) {
    if (holder_ != nullptr)
        return holder_ == client ? -EINVAL : -ENXIO;
    holder_ = client;
    return 0;
}

int EmulatedParport::access(UMockdevIoctlClient* client, unsigned long request) {
    switch (request) {
    case PPRELEASE:
        holder_ = nullptr;
        return 0;
    case PPDATADIR:
        return 0;
    case PPWDATA:
        wires.data = PointedByte(client).get();
        wires.written.emplace_back(0, wires.data);
        return 0;
    case PPWCONTROL:
        wires.control = PointedByte(client).get();
        wires.written.emplace_back(2, wires.control);
        return 0;
    case PPRDATA:
        PointedByte(client).set(wires.data);
        return 0;
    case PPRSTATUS:
        PointedByte(client).set(wires.status);
        return 0;
    case PPRCONTROL:
        PointedByte(client).set(wires.control);
        return 0;
    default:
        return -EINVAL;
    }
}

std::optional<int> EmulatedParport::injectedError(unsigned long request) {
    if (!fault_ || fault_->request != request || fault_->passing-- > 0 || fault_->times-- <= 0)
        return std::nullopt;
    return -fault_->error;
}

} // namespace bitlux::test
