#pragma once

#include <string>

#include <QString>

namespace bitlux::gui {

/// Pictures of all pages of the panel that a chip's file describes, of each of which the name is
/// `prefix`, a state, and `tail`. Prints the problems of a file that is none.
void paintDescribed(const std::string& file, const QString& prefix, const QString& tail);

} // namespace bitlux::gui
