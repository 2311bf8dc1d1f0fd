#pragma once

#include "gui/widgets/binder.h"
#include "workbench/virtual_bench.h"

#include <vector>

#include <QDockWidget>
#include <QTimer>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace bitlux::gui {

/// The chip on the virtual bench: its state and that of the dongle's services, and what the user
/// can turn on and off. Time passes for the chip while this is shown.
class ChipView : public QDockWidget {
public:
    ChipView(VirtualBench& bench, Binder& binder, QWidget* parent);

    /// The device on the lines has changed; the new one is a chip.
    void chipChanged();

    /// Moves out of the main window, beside another window, with the focus in the search field.
    void openBeside(const QWidget& other);

    Event<> closed; ///< by its button

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QTreeWidgetItem* group(const QString& name);
    void addReading(const Reading& reading);
    void addSwitches();
    void turn(QTreeWidgetItem& item);
    void find(const QString& typed);
    void goToHit();
    void follow();
    void followSwitches(const Chip& chip);
    [[nodiscard]] std::vector<Reading> readings() const;

    VirtualBench& bench_;
    QLineEdit* search_;
    QTreeWidget* tree_;
    std::vector<QTreeWidgetItem*> readings_;
    std::vector<QTreeWidgetItem*> switches_;
    QTimer clock_;
    Subscription flushed_;
};

} // namespace bitlux::gui
