#pragma once

#include "platform/marker_files.h"

namespace bitlux {

/// Marker files in the folder of the user's configuration files. A folder of that name does not
/// count.
class UserMarkerFiles : public MarkerFiles {
public:
    [[nodiscard]] bool present(std::string_view name) const override;
};

} // namespace bitlux
