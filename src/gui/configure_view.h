#pragma once

#include "config/configure_dialog.h"
#include "gui/binder.h"

#include <QDialog>

class QVBoxLayout;

namespace bitlux::gui {

/// The window of frmConfigureSPI: its controls, laid out on pages. It shows itself while the form
/// is visible.
class ConfigureView : public QDialog {
public:
    ConfigureView(ConfigureDialog& form, Binder& binder, QWidget* parent);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeGeneralPage();
    QWidget* makePortBox(QWidget* page);
    QWidget* makePinsPage();
    QWidget* makeLogPage();
    void leaveOutWaitingControls();

    template <typename Widget, typename Control>
    Widget* bound(Control& control, QWidget* parent);
    /// A group box with a pair of options below each other.
    QGroupBox* pairBox(forms::Frame& frame, forms::OptionButton& first, forms::OptionButton& second,
                       QWidget* parent);

    ConfigureDialog& form_;
    Binder& binder_;
};

} // namespace bitlux::gui
