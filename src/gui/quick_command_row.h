#pragma once

#include "gui/binder.h"
#include "sending/command_lists.h"

#include <QWidget>

namespace bitlux::gui {

/// The Quick Commands on the page of single words: chosen, named, saved and deleted.
class QuickCommandRow : public QWidget {
public:
    QuickCommandRow(CommandLists& commands, Binder& binder, QWidget* parent);
};

} // namespace bitlux::gui
