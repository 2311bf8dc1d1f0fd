#include "bare_loop.h"

namespace bitlux::perf {

namespace {
constexpr std::int16_t data = address378;
constexpr std::int16_t status = address378 + statusRegister;
} // namespace

BareLoop::BareLoop(ParallelPort& port, int type, bool msbFirst, int length)
    : port_(port),
      type_(clockingType(type)),
      length_(length),
      leading_(type_.leadIn == ClockingType::noLeadIn ? 1 : 2),
      trailing_(type_.ending == WordEnding::Direct ? 1 : 2),
      firstBitShort_(type_.skipsTopElement && msbFirst),
      lastBitShort_(type_.skipsTopElement && !msbFirst) {
    for (int i = 0; i < 2 * length + leading_ + trailing_; ++i)
        bytes_.push_back(static_cast<std::uint8_t>(i));
    samples_.resize(static_cast<std::size_t>(length));
}

void BareLoop::send() {
    const std::uint8_t* next = bytes_.data();
    std::int16_t* sample = samples_.data();
    std::int16_t* end = sample + length_;
    for (int i = 0; i < leading_; ++i)
        port_.Outp(data, *next++);
    if (type_.steps[2] == BusStep::Sample) {
        for (; sample != end; ++sample) {
            port_.Outp(data, next[0]);
            port_.Outp(data, next[1]);
            next += 2;
            *sample = static_cast<std::int16_t>(port_.Inp(status));
        }
    } else {
        if (firstBitShort_) {
            *sample++ = static_cast<std::int16_t>(port_.Inp(status));
            port_.Outp(data, *next++);
        }
        for (std::int16_t* full = lastBitShort_ ? end - 1 : end; sample != full; ++sample) {
            *sample = static_cast<std::int16_t>(port_.Inp(status));
            port_.Outp(data, next[0]);
            port_.Outp(data, next[1]);
            next += 2;
        }
        if (lastBitShort_) {
            *sample = static_cast<std::int16_t>(port_.Inp(status));
            port_.Outp(data, *next++);
        }
    }
    for (int i = 0; i < trailing_; ++i)
        port_.Outp(data, *next++);
}

} // namespace bitlux::perf
