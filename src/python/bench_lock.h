#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace bitlux {

/// Lets one thread at a time into a bench, as often as it likes. Where the program waits for events
/// the thread lets go of all it holds, so that another one can act as a user would.
class BenchLock {
public:
    /// Waits at most so long; false when another thread is still inside.
    bool enter(std::chrono::milliseconds wait);
    void leave();

    /// How often the thread was inside, which takeBack wants to know.
    unsigned letGo();
    /// Waits for as long as it takes.
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
