#include "gui/desktop/accessibility.h"

#include "gui/widgets/label_accessible.h"
#include "gui/window/log_accessible.h"

namespace bitlux::gui {

void installAccessibility() {
    QAccessible::installFactory(logInterface);
    QAccessible::installFactory(labelInterface);
}

} // namespace bitlux::gui
