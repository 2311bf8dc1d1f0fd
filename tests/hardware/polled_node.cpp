#include "polled_node.h"

#include <algorithm>
#include <ctime>
#include <mutex>
#include <stdexcept>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace bitlux::test {

namespace {

std::mutex mutex; // the test bed's thread polls as well
std::vector<const PolledNode*> nodes;
thread_local int pollsOfThread = 0;
thread_local int waitsOfThread = 0;
thread_local std::function<void()> eventOfThread;

ino_t fileOf(const std::string& node) {
    struct stat status {};
    if (::stat(node.c_str(), &status) != 0)
        throw std::runtime_error("no node " + node);
    return status.st_ino;
}

timespec parts(std::chrono::nanoseconds time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    return {.tv_sec = seconds.count(), .tv_nsec = (time - seconds).count()};
}

} // namespace

PolledNode::PolledNode(const std::string& node)
    : file_(fileOf(node)), timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC)) {
    const std::lock_guard lock(mutex);
    nodes.push_back(this);
}

PolledNode::~PolledNode() {
    const std::lock_guard lock(mutex);
    std::erase(nodes, this);
    ::close(timer_);
}

void PolledNode::readyAt(std::optional<std::chrono::steady_clock::time_point> time) {
    itimerspec timer{};
    if (time)
        timer.it_value = parts(time->time_since_epoch());
    ::timerfd_settime(timer_, TFD_TIMER_ABSTIME, &timer, nullptr);
}

void PolledNode::hangUp() {
    {
        const std::lock_guard lock(mutex);
        hungUp_ = true;
    }
    readyAt(std::chrono::steady_clock::now());
}

short PolledNode::events() const {
    return hungUp_ ? POLLOUT | POLLERR | POLLHUP : POLLOUT;
}

const PolledNode* PolledNode::behind(int descriptor) {
    struct stat status {};
    if (nodes.empty() || ::fstat(descriptor, &status) != 0)
        return nullptr;
    const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const PolledNode* node) {
        return node->file_ == status.st_ino;
    });
    return found == nodes.end() ? nullptr : *found;
}

int PolledNode::polls() {
    return pollsOfThread;
}

int PolledNode::waits() {
    return waitsOfThread;
}

void PolledNode::whenWaiting(std::function<void()> event) {
    eventOfThread = std::move(event);
}

namespace {

int pollAll(pollfd* asked, nfds_t count, int milliseconds) {
    ++pollsOfThread;
    waitsOfThread += std::max(milliseconds, 0);
    if (milliseconds != 0 && eventOfThread)
        std::exchange(eventOfThread, nullptr)();
    std::vector<pollfd> real(asked, asked + count);
    {
        const std::lock_guard lock(mutex);
        for (pollfd& entry : real)
            if (const PolledNode* node = PolledNode::behind(entry.fd))
                entry = {.fd = node->timer(), .events = POLLIN, .revents = 0};
    }
    const timespec time = parts(std::chrono::milliseconds(milliseconds));
    const int ready = ::ppoll(real.data(), count, milliseconds < 0 ? nullptr : &time, nullptr);
    const std::lock_guard lock(mutex);
    for (nfds_t i = 0; i < count; ++i) {
        const bool isNode = real[i].fd != asked[i].fd;
        const PolledNode* const node = isNode ? PolledNode::behind(asked[i].fd) : nullptr;
        const bool isReady = real[i].revents != 0;
        asked[i].revents = node != nullptr && isReady ? node->events() : real[i].revents;
    }
    return ready;
}

} // namespace

} // namespace bitlux::test

// Stands in for the one of the C library in this executable and in the libraries it loads.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int poll(pollfd* entries, nfds_t count, int milliseconds) {
    return bitlux::test::pollAll(entries, count, milliseconds);
}
