#pragma once

#include "testbed.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace bitlux::test {

/// A device node of the test bed whose requests this program answers, one at a time and under the
/// lock, on a thread of the test bed. One program at a time may hold it.
class EmulatedNode {
public:
    virtual ~EmulatedNode() { detach(); }
    EmulatedNode(const EmulatedNode&) = delete;
    EmulatedNode& operator=(const EmulatedNode&) = delete;

    [[nodiscard]] bool isHeld() {
        const std::lock_guard lock(mutex_);
        return holder_ != nullptr;
    }

protected:
    /// `description` has the device in words of the test bed.
    EmulatedNode(const Testbed& testbed, std::string node, const std::string& description);
    /// Nothing is answered from here on; for destructors of those who answer.
    void detach();

    /// A result, or a negative error, as in the kernel.
    virtual int answer(UMockdevIoctlClient* client, unsigned long request) = 0;
    /// Ends what a program has here, without a trace.
    virtual void forget(const UMockdevIoctlClient* client) {
        if (holder_ == client)
            holder_ = nullptr;
    }

    template <typename Action>
    auto locked(Action action) {
        const std::lock_guard lock(mutex_);
        return action();
    }
    [[nodiscard]] const std::string& node() const { return node_; }
    [[nodiscard]] std::string file() const; ///< of the node, in the test bed

    UMockdevTestbed* testbed_;
    UMockdevIoctlClient* holder_ = nullptr;
    std::vector<unsigned long> requests_;

private:
    static gboolean onRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self);
    static void onVanished(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self);

    std::string node_;
    UMockdevIoctlBase* driver_;
    std::mutex mutex_;
};

} // namespace bitlux::test
