#include "python/bench_lock.h"

#include <utility>

namespace bitlux {

bool BenchLock::enter(std::chrono::milliseconds wait) {
    std::unique_lock lock(mutex_);
    if (!isMine() && !freed_.wait_for(lock, wait, [this] { return isMine(); }))
        return false;
    owner_ = std::this_thread::get_id();
    ++depth_;
    return true;
}

void BenchLock::leave() {
    const std::scoped_lock lock(mutex_);
    if (--depth_ == 0)
        freed_.notify_one();
}

unsigned BenchLock::releaseAll() {
    const std::scoped_lock lock(mutex_);
    if (depth_ == 0 || !isMine())
        return 0;
    freed_.notify_one();
    return std::exchange(depth_, 0);
}

void BenchLock::takeBack(unsigned depth) {
    if (depth == 0)
        return;
    std::unique_lock lock(mutex_);
    freed_.wait(lock, [this] { return isMine(); });
    owner_ = std::this_thread::get_id();
    depth_ += depth;
}

} // namespace bitlux
