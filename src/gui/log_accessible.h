#pragma once

namespace bitlux::gui {

/// Lets assistive tools and test tools read a LogView as a list whose items are the lines in
/// sight. To be called once, before the first window.
void installLogAccessibility();

} // namespace bitlux::gui
