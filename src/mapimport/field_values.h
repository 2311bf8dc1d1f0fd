#pragma once

#include "chips/description.h"
#include "chips/problem.h"
#include "mapimport/source_map.h"

#include <vector>

namespace bitlux::mapimport {

/// The values of a field of `width` bits (1 to 64) as texts with their codes, by the codes: each
/// code once, each text once, none or at least two. Values with bits that are not compared, and the
/// one for all others, are written out. What does not fit is reported in `notes`.
std::vector<chips::Choice> choicesOf(const MapField& field, int width, chips::Problems& notes);

} // namespace bitlux::mapimport
