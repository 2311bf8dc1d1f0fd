#pragma once

#include "gui/form_dialog.h"
#include "panels/zt72518/test_mode_form.h"

namespace bitlux::gui {

/// The window of the form "TestMode".
class TestModeView : public FormDialog {
public:
    TestModeView(zt72518::TestModeForm& form, Binder& binder, QWidget* parent);

private:
    QWidget* makeFlags();
    QWidget* makeThresholds();
    QWidget* makeThermal();
    QWidget* makeTrimming();
    QWidget* makeTests();
    QWidget* makeOptions(const QString& title,
                         const forms::ControlArray<forms::OptionButton>& options, int columns,
                         QWidget* parent);

    zt72518::TestModeForm& form_;
    Binder& binder_;
};

} // namespace bitlux::gui
