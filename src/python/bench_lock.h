#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace bitlux {

/// Admits one thread at a time to a bench; it may enter repeatedly. While the program waits for
/// events the thread releases the lock completely, so that another thread can act like a user.
class BenchLock {
public:
    /// Waits at most this long; false when another thread is still inside.
    bool enter(std::chrono::milliseconds wait);
    void leave();

    /// Returns how often the thread was inside, which takeBack needs.
    unsigned releaseAll();
    /// Waits without limit.
    void takeBack(unsigned depth);

private:
    [[nodiscard]] bool isMine() const {
        return depth_ == 0 || owner_ == std::this_thread::get_id();
    }

    std::mutex mutex_;
    std::condition_variable freed_;
    std::thread::id owner_;
    unsigned depth_ = 0;
};

} // namespace bitlux
