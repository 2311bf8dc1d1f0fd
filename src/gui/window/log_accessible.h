#pragma once

#include <QAccessible>

namespace bitlux::gui {

/// For assistive tools: a LogView as a list whose items are the visible lines. Null for any other
/// object.
QAccessibleInterface* logInterface(const QString& key, QObject* object);

} // namespace bitlux::gui
