#pragma once

#include "gui/widgets/binder.h"
#include "program/program.h"

#include <QWidget>

namespace bitlux::gui {

/// The Quick Commands on the page of single words: chosen, named, saved and deleted.
class QuickCommandRow : public QWidget {
public:
    QuickCommandRow(Program& program, Binder& binder, QWidget* parent);
};

} // namespace bitlux::gui
