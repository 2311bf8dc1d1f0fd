#pragma once

#include <umockdev.h>

namespace bitlux::test {

/// A folder of device nodes that stands in for /dev while it lives; one at a time.
class Testbed {
public:
    Testbed();
    ~Testbed();
    Testbed(const Testbed&) = delete;
    Testbed& operator=(const Testbed&) = delete;

    [[nodiscard]] UMockdevTestbed* get() const { return testbed_; }

private:
    UMockdevTestbed* testbed_;
};

} // namespace bitlux::test
