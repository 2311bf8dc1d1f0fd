#pragma once

#include "platform/forms/value.h"

#include <cstddef>
#include <functional>
#include <span>
#include <type_traits>
#include <utility>

namespace bitlux::forms {

/// A callable with a name, whose arguments are checked.
struct Procedure {
    std::size_t arity;
    /// Takes `arity` arguments; raises Failure when one is of the wrong kind.
    std::function<Value(std::span<const Value>)> run;
};

namespace detail {

template <typename R, typename... Args, std::size_t... I>
Value runWith(const std::function<R(Args...)>& body, [[maybe_unused]] std::span<const Value> given,
              std::index_sequence<I...>) {
    if constexpr (std::is_void_v<R>) {
        body(valueAs<std::decay_t<Args>>(given[I])...);
        return {};
    } else {
        return toValue(body(valueAs<std::decay_t<Args>>(given[I])...));
    }
}

template <typename R, typename... Args>
Procedure makeProcedure(std::function<R(Args...)> body) {
    return {.arity = sizeof...(Args),
            .run = [body = std::move(body)](std::span<const Value> given) {
                return runWith(body, given, std::index_sequence_for<Args...>{});
            }};
}

} // namespace detail

/// Made from any callable without overloads that takes values and returns one or nothing.
template <typename Body>
Procedure makeProcedure(Body&& body) {
    return detail::makeProcedure(std::function(std::forward<Body>(body)));
}

} // namespace bitlux::forms
