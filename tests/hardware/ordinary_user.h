#pragma once

#include <cstdlib>
#include <stdexcept>

#include <unistd.h>

namespace bitlux::test {

/// Takes root's rights away for as long as it lives.
class OrdinaryUser {
public:
    OrdinaryUser() {
        if (root_ && ::seteuid(nobody) != 0)
            throw std::runtime_error("root cannot become an ordinary user");
    }
    ~OrdinaryUser() {
        if (root_ && ::seteuid(0) != 0)
            std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    bool root_ = ::geteuid() == 0;
};

} // namespace bitlux::test
