#pragma once

#include "chips/problem.h"
#include "platform/documents/document.h"

#include <cstddef>

namespace bitlux::chips {

using documents::Node;
using documents::parseDocument;

/// Expands the short forms of a document. A table in a list that contains a table `repeat` of
/// parallel lists is repeated for each position of these lists, with `{key}` in its texts replaced
/// by the element of that key's list. `{0..15}` in a text of a list is replaced by as many texts. A
/// short form that repeats nothing is a problem. The result has at most `most` nodes.
void expand(Node& document, std::size_t most, Problems& problems);

} // namespace bitlux::chips
