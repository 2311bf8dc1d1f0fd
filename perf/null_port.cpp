#include "null_port.h"

namespace bitlux::perf {

namespace {

class NullPort : public ParallelPort {
public:
    NullPort() : ParallelPort(true) {}
    std::int32_t Inp(std::int16_t) override { return 0; }
    void Outp(std::int16_t, std::int16_t) override {}
    void EnablePorts(std::int16_t, std::int16_t) override {}
    void DisablePorts(std::int16_t, std::int16_t) override {}
    std::int16_t GetLPTPortAddress(std::int16_t) override { return 0x378; }
};

} // namespace

std::unique_ptr<ParallelPort> makeNullPort() {
    return std::make_unique<NullPort>();
}

} // namespace bitlux::perf
