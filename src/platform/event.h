#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace bitlux {

/// Keeps a subscriber subscribed for as long as it lives. It may outlive the event.
using Subscription = std::shared_ptr<void>;

/// Callbacks by which a lower module notifies upper modules: they subscribe at start-up, and are
/// called in the order of their subscriptions.
template <typename... Args>
class Event {
public:
    using Subscriber = std::function<void(Args...)>;

    /// Subscribes permanently: the subscriber lives as long as the event.
    void subscribe(Subscriber subscriber) { add(std::move(subscriber)); }

    /// Subscribes until the result is destroyed.
    [[nodiscard]] Subscription follow(Subscriber subscriber) {
        const std::size_t key = add(std::move(subscriber));
        return {nullptr, [list = std::weak_ptr(list_), key](void*) {
                    if (const auto subscribers = list.lock())
                        subscribers->erase(key);
                }};
    }

    /// While it runs, a subscriber may end subscriptions, its own too, and destroy the event.
    void raise(Args... args) const {
        if (list_->empty())
            return;
        const auto list = list_;
        for (auto next = list->begin(); next != list->end();) {
            const auto [key, subscriber] = *next;
            subscriber(args...);
            next = list->upper_bound(key);
        }
    }

private:
    std::size_t add(Subscriber subscriber) {
        list_->emplace(next_, std::move(subscriber));
        return next_++;
    }

    std::shared_ptr<std::map<std::size_t, Subscriber>> list_ =
        std::make_shared<std::map<std::size_t, Subscriber>>();
    std::size_t next_ = 0;
};

} // namespace bitlux
