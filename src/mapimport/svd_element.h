#pragma once

#include "mapimport/map_builder.h"

#include <string_view>
#include <vector>

namespace bitlux::mapimport {

/// An element of a CMSIS-SVD file with those that it is derived from: what it does not say itself,
/// the next one does.
class SvdElement {
public:
    /// Raises MapError when what it is derived from is not there, or is derived from it.
    SvdElement(pugi::xml_node node, const MapBuilder& builder);

    [[nodiscard]] pugi::xml_node own() const { return chain_.front(); }
    /// The first child of this name; an empty node when there is none.
    [[nodiscard]] pugi::xml_node find(std::string_view name) const;
    /// The children of a container such as `fields`, or of the elements themselves when it is
    /// empty, that have one of two names. One that is derived replaces what has its name there.
    [[nodiscard]] std::vector<pugi::xml_node>
    list(std::string_view container, std::string_view kind, std::string_view otherKind = {}) const;

private:
    std::vector<pugi::xml_node> chain_;
};

/// Reads `dim`, `dimIncrement` and `dimIndex` of an element.
Copies copiesOf(pugi::xml_node node, MapBuilder& builder);

} // namespace bitlux::mapimport
