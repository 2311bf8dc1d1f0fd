#pragma once

#include <QAccessible>

namespace bitlux::gui {

/// For assistive tools: a label with a LabelBehaviour as the check box or the button that it is.
/// Null for any other object.
QAccessibleInterface* labelInterface(const QString& key, QObject* object);

} // namespace bitlux::gui
