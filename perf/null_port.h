#pragma once

#include "platform/parallel_port.h"

#include <memory>

namespace bitlux::perf {

/// A port that does nothing, made where the compiler of its users cannot see what it is.
std::unique_ptr<ParallelPort> makeNullPort();

} // namespace bitlux::perf
