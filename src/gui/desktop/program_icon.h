#pragma once

#include <QIcon>

namespace bitlux::gui {

/// The program's icon, drawn when it is shown at any size.
[[nodiscard]] QIcon programIcon();

} // namespace bitlux::gui
