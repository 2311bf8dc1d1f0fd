#pragma once

#include "platform/marker_files.h"

#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// Marker files whose presence is set by the caller.
class ChosenMarkerFiles : public MarkerFiles {
public:
    explicit ChosenMarkerFiles(std::vector<std::string> names = {}) : names_(std::move(names)) {}

    [[nodiscard]] bool present(std::string_view name) const override;

private:
    std::vector<std::string> names_;
};

} // namespace bitlux
