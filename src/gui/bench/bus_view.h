#pragma once

#include "bench/simulated_adapter.h"
#include "bench/simulated_dongle.h"
#include "bench/simulated_port.h"
#include "session/session.h"

#include <QWidget>

class QGridLayout;
class QLabel;

namespace bitlux::gui {

/// A bus of the virtual bench: its lines with their levels, and what went over it last.
class BusView : public QWidget {
public:
    /// Brings it up to date.
    virtual void follow() = 0;

protected:
    explicit BusView(QWidget* parent);

    /// A line: its title in the first row, and in the row `levelRow` a label for its level.
    QLabel* addLine(int column, const QString& title, const QString& name, int levelRow = 1);
    [[nodiscard]] QGridLayout& grid() { return *grid_; }

private:
    QGridLayout* grid_;
};

/// Shows a level as "1" or "0", highlighted when high. The level of an input has a border instead
/// of a background.
void showLevel(QLabel& label, bool high, bool isInput = false);

/// The pins of the parallel port.
BusView* makePortView(const SimulatedPort& port, QWidget* parent);
/// The frames of the dongle and its extra pins.
BusView* makeDongleView(const SimulatedDongle& dongle, QWidget* parent);
/// The lines of the adapter, named after the signals that they carry by the settings in force, and
/// the bytes of the last exchange.
BusView* makeAdapterView(const SimulatedAdapter& adapter, const Session& session, QWidget* parent);

} // namespace bitlux::gui
