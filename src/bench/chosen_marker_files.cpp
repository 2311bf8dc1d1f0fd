#include "bench/chosen_marker_files.h"

#include "platform/letters.h"

#include <algorithm>

namespace bitlux {

bool ChosenMarkerFiles::present(std::string_view name) const {
    return std::any_of(names_.begin(), names_.end(), [name](const std::string& chosen) {
        return equalIgnoringCase(chosen, name);
    });
}

} // namespace bitlux
