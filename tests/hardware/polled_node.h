#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include <sys/types.h>

namespace bitlux::test {

/// Lets poll() wait for an emulated device node as for a real one: the file that stands for it
/// would always be ready. For as long as it lives.
class PolledNode {
public:
    explicit PolledNode(const std::string& node);
    ~PolledNode();
    PolledNode(const PolledNode&) = delete;
    PolledNode& operator=(const PolledNode&) = delete;

    /// From when on the node has something to give; nothing for not at all.
    void readyAt(std::optional<std::chrono::steady_clock::time_point> time);
    /// From now on the node is ready, and its device lost.
    void hangUp();

    /// What poll() tells of the node when its timer has run out.
    [[nodiscard]] short events() const;
    [[nodiscard]] int timer() const { return timer_; }
    /// The node that is behind a descriptor, or null.
    static const PolledNode* behind(int descriptor);
    /// How often this thread has polled.
    static int polls();
    /// How many milliseconds this thread was ready to wait in all its polls.
    static int waits();
    /// Runs `event` once, when this thread next begins to wait in a poll.
    static void whenWaiting(std::function<void()> event);

private:
    ino_t file_;
    int timer_;
    bool hungUp_ = false;
};

} // namespace bitlux::test
