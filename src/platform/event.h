#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace bitlux {

/// How a lower room tells upper rooms that something happened: they subscribe at start-up, and
/// are called in the order of their subscriptions.
template <typename... Args>
class Event {
public:
    using Subscriber = std::function<void(Args...)>;

    void subscribe(Subscriber subscriber) { subscribers_.push_back(std::move(subscriber)); }

    void raise(Args... args) const {
        for (const auto& subscriber : subscribers_)
            subscriber(args...);
    }

private:
    std::vector<Subscriber> subscribers_;
};

} // namespace bitlux
