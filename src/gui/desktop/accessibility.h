#pragma once

namespace bitlux::gui {

/// Lets assistive tools and test tools read and operate the widgets that the toolkit does not know.
/// To be called once, before the first window.
void installAccessibility();

} // namespace bitlux::gui
