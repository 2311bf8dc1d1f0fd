#pragma once

#include "platform/failure.h"

#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {

/// The text of the failure that `action` ends in; a test failure when it ends in none, or in one
/// that is not about a port.
template <typename Action>
std::string failureText(Action action) {
    try {
        action();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.kind(), Failure::Kind::PortUnusable);
        return failure.what();
    }
    ADD_FAILURE() << "no failure";
    return {};
}

inline void expectContains(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << '"' << text << "\" lacks \"" << part << '"';
}

} // namespace bitlux::test
