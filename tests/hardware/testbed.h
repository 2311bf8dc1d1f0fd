#pragma once

#include <stdexcept>

#include <umockdev.h>

namespace bitlux::test {

/// A folder of device nodes that stands in for /dev while it lives; one at a time.
class Testbed {
public:
    Testbed() : testbed_(umockdev_testbed_new()) {
        if (umockdev_in_mock_environment() == FALSE)
            throw std::runtime_error("run the hardware tests under umockdev-wrapper");
    }
    ~Testbed() { g_object_unref(testbed_); }
    Testbed(const Testbed&) = delete;
    Testbed& operator=(const Testbed&) = delete;

    [[nodiscard]] UMockdevTestbed* get() const { return testbed_; }

private:
    UMockdevTestbed* testbed_;
};

} // namespace bitlux::test
