#include "emulated_node.h"

#include <stdexcept>
#include <utility>

namespace bitlux::test {

EmulatedNode::EmulatedNode(const Testbed& testbed, std::string node, const std::string& description)
    : testbed_(testbed.get()), node_(std::move(node)), driver_(umockdev_ioctl_base_new()) {
    for (const auto& [signal, handler] :
         {std::pair{"handle-ioctl", reinterpret_cast<GCallback>(&onRequest)},
          {"client-vanished", reinterpret_cast<GCallback>(&onVanished)}})
        g_signal_connect_data(driver_, signal, handler, this, nullptr, GConnectFlags{});
    if (umockdev_testbed_add_from_string(testbed_, description.c_str(), nullptr) == FALSE ||
        umockdev_testbed_attach_ioctl(testbed_, node_.c_str(), driver_, nullptr) == FALSE)
        throw std::runtime_error("no emulated " + node_);
}

void EmulatedNode::detach() {
    if (driver_ == nullptr)
        return;
    umockdev_testbed_detach_ioctl(testbed_, node_.c_str(), nullptr);
    g_signal_handlers_disconnect_by_data(driver_, this);
    g_object_unref(std::exchange(driver_, nullptr));
}

std::string EmulatedNode::file() const {
    g_autofree gchar* root = umockdev_testbed_get_root_dir(testbed_);
    return root + node_;
}

gboolean EmulatedNode::onRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) {
    auto* const device = static_cast<EmulatedNode*>(self);
    const int result = device->locked([&] {
        const unsigned long request = umockdev_ioctl_client_get_request(client);
        device->requests_.push_back(request);
        return device->answer(client, request);
    });
    umockdev_ioctl_client_complete(client, result < 0 ? -1 : result, result < 0 ? -result : 0);
    return TRUE;
}

void EmulatedNode::onVanished(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) {
    auto* const device = static_cast<EmulatedNode*>(self);
    device->locked([&] { device->forget(client); });
}

} // namespace bitlux::test
