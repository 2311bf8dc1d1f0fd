#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace bitlux::test {

/// Sets a variable of the environment, and sets it back.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        set(value);
    }
    ~EnvironmentVariable() { set(old_ ? old_->c_str() : nullptr); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const char* value) {
        value == nullptr ? ::unsetenv(name_) : ::setenv(name_, value, 1);
    }
    const char* name_;
    std::optional<std::string> old_;
};

} // namespace bitlux::test
