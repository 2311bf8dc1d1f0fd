#include "testbed.h"

#include <stdexcept>

namespace bitlux::test {

Testbed::Testbed() : testbed_(umockdev_testbed_new()) {
    if (umockdev_in_mock_environment() != FALSE)
        return;
    g_object_unref(testbed_);
    throw std::runtime_error("run the hardware tests under umockdev-wrapper");
}

Testbed::~Testbed() {
    g_object_unref(testbed_);
}

} // namespace bitlux::test
