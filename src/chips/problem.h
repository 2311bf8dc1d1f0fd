#pragma once

#include "platform/documents/problem.h"

namespace bitlux::chips {

using documents::describe;
using documents::Place;
using documents::Problem;
using documents::Problems;

} // namespace bitlux::chips
