#pragma once

#include "bench/simulated_port.h"
#include "gui/binder.h"

#include <array>

#include <QDockWidget>

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;

namespace bitlux::gui {

/// The virtual bench beside the program: which device is on the pins, and the levels of the pins.
class BenchView : public QDockWidget {
public:
    /// `device` is the name of the one that is on the pins. Follows the refreshes of `binder`.
    BenchView(SimulatedPort& port, const QString& device, Binder& binder, QWidget* parent);

private:
    void addDevice(QBoxLayout& row, const QString& device);
    void addPins(QBoxLayout& row);
    void connectDevice();
    void follow();

    SimulatedPort& port_;
    QComboBox* device_ = nullptr;
    QLineEdit* replies_ = nullptr;
    QLabel* problem_ = nullptr;
    std::array<QLabel*, 8> data_{};
    QLabel* dataOut_ = nullptr;
    Subscription flushed_;
};

} // namespace bitlux::gui
