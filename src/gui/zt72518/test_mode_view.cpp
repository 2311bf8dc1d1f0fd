#include "gui/zt72518/test_mode_view.h"

#include "gui/panel_widgets.h"
#include "platform/forms/form_set.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QSlider>

namespace bitlux::gui {

TestModeView::TestModeView(zt72518::TestModeForm& form, Binder& binder, QWidget* parent)
    : FormDialog(
          form, [&set = form.set()] { set.form("TestMode").setVisible(false); }, binder, parent),
      form_(form),
      binder_(binder) {
    auto* layout = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    left->addWidget(PanelWidgets::button(binder_, form_.enter_test_mode, this));
    left->addWidget(makeFlags());
    left->addWidget(makeThermal());
    left->addStretch();
    layout->addLayout(left);
    auto* right = new QVBoxLayout;
    for (QWidget* group : {makeThresholds(), makeTrimming(), makeTests()})
        right->addWidget(group);
    right->addStretch();
    layout->addLayout(right, 1);
}

QWidget* TestModeView::makeFlags() {
    auto* box = new QGroupBox("CAN and LIN flags", this);
    auto* grid = new QGridLayout(box);
    grid->setVerticalSpacing(3);
    for (int i = 0; i <= form_.can_lin.last(); ++i) {
        grid->addWidget(PanelWidgets::button(binder_, form_.can_lin(i), box), i, 0);
        grid->addWidget(binder_.make<QLabel>(form_.can_lin_lbl(i), box), i, 1);
    }
    return box;
}

QWidget* TestModeView::makeThresholds() {
    auto* box = new QGroupBox("Thresholds and flags on pins", this);
    auto* column = new QVBoxLayout(box);
    auto* row = new QHBoxLayout;
    auto* list = binder_.make<QComboBox>(form_.thres_combox, box);
    list->setPlaceholderText("Choose a threshold");
    list->setAccessibleName("Threshold");
    row->addWidget(list, 1);
    row->addWidget(PanelWidgets::button(binder_, form_.thres_send, box));
    column->addLayout(row);
    for (const auto& line : form_.thres_lbl)
        column->addWidget(binder_.make<QLabel>(*line, box));
    return box;
}

QWidget* TestModeView::makeThermal() {
    QWidget* box = makeOptions("Thermal sensors", form_.term_cond, 1, this);
    box->layout()->addWidget(PanelWidgets::button(binder_, form_.term_send, box));
    return box;
}

QWidget* TestModeView::makeTrimming() {
    auto* box = new QGroupBox("Trimming", this);
    auto* grid = new QGridLayout(box);
    grid->addWidget(makeOptions("Version", form_.trim_version, 4, box), 0, 0);
    grid->addWidget(makeOptions("Vdd", form_.trim_volt, 2, box), 0, 1);
    grid->addWidget(makeOptions("Oscillator", form_.trim_osci, 8, box), 1, 0, 1, 2);
    grid->addWidget(makeOptions("Bias", form_.trim_bias, 4, box), 2, 0);
    grid->addWidget(makeOptions("LIN", form_.trim_lin, 2, box), 2, 1);
    grid->addWidget(makeOptions("Fuses", form_.trim_fuse, 1, box), 3, 0, 1, 2);
    auto* row = new QHBoxLayout;
    row->addWidget(PanelWidgets::button(binder_, form_.trim_send, box));
    row->addWidget(binder_.make<QLabel>(form_.trimmingLabels(0), box));
    auto* bar = new QSlider(Qt::Horizontal, box);
    binder_.bind(form_.trimming_txd, *bar);
    bar->setAccessibleName("TXD low");
    row->addWidget(bar, 1);
    row->addWidget(binder_.make<QLabel>(form_.trimmingLabels(1), box));
    row->addStretch();
    grid->addLayout(row, 4, 0, 1, 2);
    return box;
}

QWidget* TestModeView::makeTests() {
    auto* box = new QGroupBox("Tests", this);
    auto* column = new QVBoxLayout(box);
    auto* buttons = new QHBoxLayout;
    for (const int test : {0, 1, 2})
        buttons->addWidget(PanelWidgets::button(binder_, form_.tests_send(test), box));
    buttons->addStretch();
    column->addLayout(buttons);
    auto* row = new QHBoxLayout;
    row->addWidget(binder_.make<QCheckBox>(form_.bit_6, box));
    const auto add = [&](const char* title, QWidget* field) {
        field->setAccessibleName(title);
        auto* label = new QLabel(title, box);
        label->setBuddy(field);
        row->addWidget(label);
        row->addWidget(field);
    };
    const auto bits = [&](forms::ComboBox& control) {
        auto* list = binder_.make<QComboBox>(control, box);
        list->setPlaceholderText("0");
        list->setMinimumWidth(list->fontMetrics().averageCharWidth() * 8);
        return list;
    };
    add("Bits 5-3", bits(form_.periph_dec));
    add("Bits 2-0", bits(form_.periph_scan_list));
    add("Pattern", binder_.make<QLineEdit>(form_.Text1, box));
    row->addWidget(PanelWidgets::button(binder_, form_.tests_send(3), box));
    column->addLayout(row);
    return box;
}

QWidget* TestModeView::makeOptions(const QString& title,
                                   const forms::ControlArray<forms::OptionButton>& options,
                                   int columns, QWidget* parent) {
    auto* box = new QGroupBox(title, parent);
    auto* column = new QVBoxLayout(box);
    auto* grid = new QGridLayout;
    column->addLayout(grid);
    for (int place = 0; const auto& option : options) {
        grid->addWidget(binder_.make<QRadioButton>(*option, box), place / columns, place % columns);
        ++place;
    }
    return box;
}

} // namespace bitlux::gui
