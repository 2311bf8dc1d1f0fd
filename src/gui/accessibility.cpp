#include "gui/accessibility.h"

#include "gui/label_accessible.h"
#include "gui/log_accessible.h"

namespace bitlux::gui {

void installAccessibility() {
    QAccessible::installFactory(logInterface);
    QAccessible::installFactory(labelInterface);
}

} // namespace bitlux::gui
