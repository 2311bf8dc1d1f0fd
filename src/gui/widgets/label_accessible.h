#pragma once

#include <QAccessible>

namespace bitlux::gui {

/// For assistive tools: a label with a LabelBehaviour as a check box or a button. Null for any
/// other object.
QAccessibleInterface* labelInterface(const QString& key, QObject* object);

} // namespace bitlux::gui
