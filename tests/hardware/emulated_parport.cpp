#include "emulated_parport.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <stdexcept>

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
    : testbed_(testbed.get()),
      node_(fmt::format("/dev/parport{}", number)),
      driver_(umockdev_ioctl_base_new()) {
    g_signal_connect_data(driver_, "handle-ioctl", reinterpret_cast<GCallback>(&onRequest), this,
                          nullptr, GConnectFlags{});
    g_signal_connect_data(driver_, "client-vanished", reinterpret_cast<GCallback>(&onVanished),
                          this, nullptr, GConnectFlags{});
    const std::string device = fmt::format("P: /devices/parport{0}\nN: parport{0}\n"
                                           "E: DEVNAME=/dev/parport{0}\nE: SUBSYSTEM=ppdev\n\n",
                                           number);
    if (umockdev_testbed_add_from_string(testbed_, device.c_str(), nullptr) == FALSE ||
        umockdev_testbed_attach_ioctl(testbed_, node_.c_str(), driver_, nullptr) == FALSE)
        throw std::runtime_error("no emulated " + node_);
}

EmulatedParport::~EmulatedParport() {
    umockdev_testbed_detach_ioctl(testbed_, node_.c_str(), nullptr);
    g_signal_handlers_disconnect_by_data(driver_, this);
    g_object_unref(driver_);
}

void EmulatedParport::break_(const Fault& fault) {
    const std::lock_guard lock(mutex_);
    fault_ = fault;
}

void EmulatedParport::repair() {
    const std::lock_guard lock(mutex_);
    fault_.reset();
}

void EmulatedParport::takeAway() const {
    std::filesystem::rename(file(), file() + ".removed");
}

void EmulatedParport::bringBack() const {
    std::filesystem::rename(file() + ".removed", file());
}

std::string EmulatedParport::file() const {
    gchar* const root = umockdev_testbed_get_root_dir(testbed_);
    const std::string name = root + node_;
    g_free(root);
    return name;
}

bool EmulatedParport::isHeld() {
    const std::lock_guard lock(mutex_);
    return holder_ != nullptr;
}

std::vector<unsigned long> EmulatedParport::requests() {
    const std::lock_guard lock(mutex_);
    return requests_;
}

gboolean EmulatedParport::onRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client,
                                    gpointer self) {
    const int error = static_cast<EmulatedParport*>(self)->answer(client);
    umockdev_ioctl_client_complete(client, error == 0 ? 0 : -1, error);
    return TRUE;
}

void EmulatedParport::onVanished(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) {
    auto* const port = static_cast<EmulatedParport*>(self);
    const std::lock_guard lock(port->mutex_);
    if (port->holder_ == client)
        port->holder_ = nullptr;
}

int EmulatedParport::answer(UMockdevIoctlClient* client) {
    const std::lock_guard lock(mutex_);
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    requests_.push_back(request);
    if (const std::optional<int> error = injectedError(request))
        return *error;
    if (request == PPEXCL)
        return 0;
    if (request == PPCLAIM)
        return claim(client);
    return holder_ == client ? access(client, request) : EINVAL;
}

int EmulatedParport::claim(UMockdevIoctlClient* client) {
    if (holder_ != nullptr)
        return holder_ == client ? EINVAL : ENXIO;
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
        return EINVAL;
    }
}

std::optional<int> EmulatedParport::injectedError(unsigned long request) {
    if (!fault_ || fault_->request != request)
        return std::nullopt;
    if (fault_->passing-- > 0)
        return std::nullopt;
    if (fault_->times-- <= 0)
        return std::nullopt;
    return fault_->error;
}

} // namespace bitlux::test
