#include "platform/linux/ppdev_port.h"

#include "platform/failure.h"
#include "platform/parallel_port.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/parport.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// Bit 5 would turn the data lines round, and no write could turn them back.
constexpr std::uint8_t controlLines =
    PARPORT_CONTROL_STROBE | PARPORT_CONTROL_AUTOFD | PARPORT_CONTROL_INIT | PARPORT_CONTROL_SELECT;

[[noreturn]] void failOnPort(const std::string& text) {
    throw Failure(Failure::Kind::PortUnusable, text);
}

[[noreturn]] void failHeld(const std::string& node) {
    failOnPort(
        fmt::format("The port {} is held by another driver or program. Unload the printer driver "
                    "with \"sudo rmmod lp\", or close the other program.",
                    node));
}

[[noreturn]] void failToOpen(const std::string& node, int error) {
    switch (error) {
    case ENOENT:
    case ENXIO:
    case ENODEV:
        failOnPort(fmt::format("There is no port {}. Load the driver with \"sudo modprobe ppdev\".",
                               node));
    case EACCES:
    case EPERM:
        failOnPort(
            fmt::format("You have no permission to use {}. Join the group lp with \"sudo usermod "
                        "-a -G lp $USER\", then log in again.",
                        node));
    case EBUSY:
        failHeld(node);
    default:
        failOnPort(fmt::format("The port {} cannot be opened: {}.", node, std::strerror(error)));
    }
}

[[noreturn]] void failToClaim(const std::string& node, int error) {
    switch (error) {
    case ENXIO:
    case EBUSY:
        failHeld(node);
    case ENOTTY:
        failOnPort(fmt::format("{} is no parallel port. Remove it, and load the driver with "
                               "\"sudo modprobe ppdev\".",
                               node));
    default:
        failOnPort(fmt::format("The port {} cannot be claimed: {}.", node, std::strerror(error)));
    }
}

template <typename Call>
int untilUninterrupted(Call call) {
    int result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

int control(int descriptor, unsigned long request, void* argument = nullptr) {
    return untilUninterrupted([=] { return ::ioctl(descriptor, request, argument); });
}

int openNode(const std::string& node) {
    const int descriptor =
        untilUninterrupted([&] { return ::open(node.c_str(), O_RDWR | O_CLOEXEC); });
    if (descriptor < 0)
        failToOpen(node, errno);
    return descriptor;
}

} // namespace

PpdevPort::Descriptor::~Descriptor() {
    ::close(number_);
}

PpdevPort::PpdevPort(const std::string& node)
    : node_(node), descriptor_(openNode(node)), identity_(identityOf(node)) {
    claim();
}

PpdevPort::~PpdevPort() {
    control(descriptor_.number(), PPRELEASE);
}

std::uint8_t PpdevPort::read(int offset) {
    std::uint8_t value = 0;
    switch (offset) {
    case dataRegister:
        access(PPRDATA, &value);
        break;
    case statusRegister:
        access(PPRSTATUS, &value);
        break;
    case controlRegister:
        access(PPRCONTROL, &value);
        break;
    }
    return value;
}

void PpdevPort::write(int offset, std::uint8_t value) {
    switch (offset) {
    case dataRegister:
        access(PPWDATA, &value);
        break;
    case controlRegister:
        value &= controlLines;
        access(PPWCONTROL, &value);
        break;
    }
}

void PpdevPort::claim() {
    if (control(descriptor_.number(), PPEXCL) < 0 || control(descriptor_.number(), PPCLAIM) < 0)
        failToClaim(node_, errno);
    int towardsDevice = 0;
    if (control(descriptor_.number(), PPDATADIR, &towardsDevice) < 0)
        failToClaim(node_, errno);
}

void PpdevPort::access(unsigned long request, void* argument) {
    if (control(descriptor_.number(), request, argument) < 0)
        failLost(std::strerror(errno));
}

void PpdevPort::requirePresent() const {
    if (identityOf(node_) != identity_)
        failLost("it was removed");
}

void PpdevPort::failLost(const char* reason) const {
    failOnPort(
        fmt::format("The port {} was lost while in use: {}. Check that its card or adapter is "
                    "plugged in, then try again.",
                    node_, reason));
}

/// Of no file when there is none.
PpdevPort::Identity PpdevPort::identityOf(const std::string& node) {
    struct stat status {};
    if (::stat(node.c_str(), &status) != 0)
        return {};
    return {.device = status.st_dev, .number = status.st_ino};
}

} // namespace bitlux
