#include "bench/chosen_marker_files.h"

#include <algorithm>

namespace bitlux {

bool ChosenMarkerFiles::present(std::string_view name) const {
    return std::any_of(names_.begin(), names_.end(),
                       [name](const std::string& chosen) { return isSameMarker(chosen, name); });
}

} // namespace bitlux
