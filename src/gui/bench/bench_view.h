#pragma once

#include "gui/bench/bus_view.h"
#include "gui/bench/chip_view.h"
#include "gui/widgets/binder.h"
#include "gui/window/main_window.h"
#include "program/program.h"
#include "workbench/virtual_bench.h"

#include <array>

#include <QDockWidget>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace bitlux::gui {

/// The virtual bench below the window: which device is on the lines, whether dongle and adapter are
/// plugged in, and the state of the bus in use. For the model of a chip there is a view of the chip
/// at the side.
class BenchView : public QDockWidget {
public:
    /// `device` is the name of the device on the lines. Follows the refreshes of `binder`.
    BenchView(VirtualBench& bench, Program& program, const QString& device, Binder& binder,
              QWidget* parent);

    /// Shows the model of a chip beside a panel; it replaces a device that is another chip.
    void showModel(const chips::Chip& chip, const QWidget& panel);
    /// Options by which `bitlux send` sends to such a device.
    [[nodiscard]] std::vector<std::string> commandOptions() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Bus { Port, Dongle, Adapter };

    void addDevice(QBoxLayout& row, const QString& device);
    void fillDevices();
    void addPluggedIn(QBoxLayout& row);
    BusView* makeBusView(Bus bus);
    void connectDevice();
    void showChip();
    void follow();

    VirtualBench& bench_;
    Program& program_;
    Binder& binder_;
    ChipView* chip_ = nullptr; ///< made for the first chip
    QComboBox* device_ = nullptr;
    QLineEdit* replies_ = nullptr;
    QLabel* problem_ = nullptr;
    QCheckBox* chipShown_ = nullptr;
    QBoxLayout* bus_ = nullptr;
    std::array<BusView*, 3> buses_{}; ///< by Bus, each made when it is first in use
    Subscription flushed_;
};

/// Adds the virtual bench below the program's window, and the button for it to the panels.
void addBench(MainWindow& window, VirtualBench& bench, const QString& device);

} // namespace bitlux::gui
