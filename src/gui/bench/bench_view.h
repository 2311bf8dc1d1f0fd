#pragma once

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
class QGridLayout;
class QLabel;
class QLineEdit;

namespace bitlux::gui {

/// The virtual bench below the window: which device is on the lines, whether the dongle is plugged
/// in, and the state of the bus in use: the pins of the port, or frames and pins of the dongle. For
/// the model of a chip there is a view of the chip at the side.
class BenchView : public QDockWidget {
public:
    /// `device` is the name of the device on the lines. Follows the refreshes of `binder`.
    BenchView(VirtualBench& bench, const Program& program, const QString& device, Binder& binder,
              QWidget* parent);

    /// Shows the model of a chip beside a panel; it replaces a device that is another chip.
    void showModel(const chips::Chip& chip, const QWidget& panel);
    /// Options by which `bitlux send` sends to such a device.
    [[nodiscard]] std::vector<std::string> commandOptions() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addDevice(QBoxLayout& row, const QString& device);
    void fillDevices();
    void addDongle(QBoxLayout& row);
    QWidget* makePortPins();
    QWidget* makeDonglePins();
    QLabel* addLamp(QGridLayout& grid, int column, const QString& title, const QString& name);
    void connectDevice();
    void showChip();
    void follow();
    void followDongle();

    VirtualBench& bench_;
    const Program& program_;
    Binder& binder_;
    ChipView* chip_ = nullptr; ///< made for the first chip
    QComboBox* device_ = nullptr;
    QLineEdit* replies_ = nullptr;
    QLabel* problem_ = nullptr;
    std::array<QLabel*, 8> data_{};
    std::array<QLabel*, 4> control_{};
    QLabel* dataOut_ = nullptr;
    QCheckBox* plugged_ = nullptr;
    QCheckBox* chipShown_ = nullptr;
    QWidget* portPins_ = nullptr;
    QWidget* donglePins_ = nullptr;
    QLabel* frameOut_ = nullptr;
    QLabel* frameIn_ = nullptr;
    std::array<QLabel*, 9> extraPins_{};
    Subscription flushed_;
};

/// Adds the virtual bench below the program's window, and the button for it to the panels.
void addBench(MainWindow& window, VirtualBench& bench, const QString& device);

} // namespace bitlux::gui
