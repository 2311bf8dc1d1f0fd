#include "gui/configure_view.h"

#include <array>

#include <QCloseEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QTabWidget>
#include <QVBoxLayout>

namespace bitlux::gui {

template <typename Widget, typename Control>
Widget* ConfigureView::bound(Control& control, QWidget* parent) {
    auto* widget = new Widget(parent);
    binder_.bind(control, *widget);
    return widget;
}

ConfigureView::ConfigureView(ConfigureDialog& form, Binder& binder, QWidget* parent)
    : QDialog(parent), form_(form), binder_(binder) {
    setWindowTitle(QString::fromStdString(form.caption()));
    auto* layout = new QVBoxLayout(this);
    auto* pages = new QTabWidget(this);
    pages->addTab(makeGeneralPage(), "General");
    pages->addTab(makePinsPage(), "SPI Pins");
    pages->addTab(makeLogPage(), "Session Log");
    layout->addWidget(pages, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (forms::Button* control : {&form_.cmdOK, &form_.cmdApply}) {
        auto* button = bound<QPushButton>(*control, this);
        button->setAutoDefault(control == &form_.cmdOK);
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);
    leaveOutWaitingControls();
}

QWidget* ConfigureView::makeGeneralPage() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    auto* fields = new QFormLayout;
    fields->addRow("Part name:", bound<QLineEdit>(form_.txtPartName, page));
    auto* length = new QHBoxLayout;
    length->addWidget(bound<QComboBox>(form_.cmbSPIWordLength, page));
    length->addWidget(bound<QLabel>(form_.lblSPIBitRange, page));
    length->addStretch();
    fields->addRow("Bits of a word:", length);
    auto* display = new QHBoxLayout;
    display->addWidget(bound<QRadioButton>(form_.optBinary, page));
    display->addWidget(bound<QRadioButton>(form_.optHex, page));
    display->addStretch();
    fields->addRow("Words are shown in:", display);
    layout->addLayout(fields);
    layout->addWidget(makePortBox(page));
    layout->addStretch();
    return page;
}

QWidget* ConfigureView::makePortBox(QWidget* page) {
    auto* box = new QGroupBox("Interface", page);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(bound<QCheckBox>(form_.ChkSerialPort, box));
    auto* setup = bound<QPushButton>(form_.Btn_ParallelPort, box);
    setup->setAutoDefault(false);
    layout->addWidget(setup, 0, Qt::AlignLeft);
    layout->addWidget(bound<QLabel>(form_.lblLPTaddress, box));
    layout->addWidget(bound<QComboBox>(form_.cmbPortsAvailable, box));
    for (const auto& control : form_.chkHardCodeLPT)
        layout->addWidget(bound<QCheckBox>(*control, box));
    return box;
}

QWidget* ConfigureView::makePinsPage() {
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    auto* pins = bound<QGroupBox>(form_.framePortPins, page);
    auto* rows = new QFormLayout(pins);
    rows->addRow("Chip select (CS):", bound<QComboBox>(form_.cmbCS, pins));
    rows->addRow("Data in (DI):", bound<QComboBox>(form_.cmbDI, pins));
    rows->addRow("Clock (CLK):", bound<QComboBox>(form_.cmbCLK, pins));
    rows->addRow("Data out (DO):", bound<QComboBox>(form_.cmbDO, pins));
    grid->addWidget(pins, 0, 0, 2, 1);
    grid->addWidget(pairBox(form_.frameSPIBitOrder, form_.optMSBfirst, form_.optLSBfirst, page), 0,
                    1);
    grid->addWidget(pairBox(form_.frameCS, form_.optCSnegative, form_.optCSpositive, page), 1, 1);
    grid->addWidget(pairBox(form_.frameDI, form_.optDIpolarity_pos, form_.optDIpolarity_neg, page),
                    2, 0);
    grid->addWidget(pairBox(form_.frameDO, form_.optDOpolarity_pos, form_.optDOpolarity_neg, page),
                    2, 1);
    auto* type = bound<QGroupBox>(form_.frameSPItype, page);
    auto* typeLayout = new QVBoxLayout(type);
    typeLayout->addWidget(bound<QTabBar>(form_.TabStripSPItype, type));
    grid->addWidget(type, 3, 0, 1, 2);
    grid->setRowStretch(4, 1);
    return page;
}

QGroupBox* ConfigureView::pairBox(forms::Frame& frame, forms::OptionButton& first,
                                  forms::OptionButton& second, QWidget* parent) {
    auto* box = bound<QGroupBox>(frame, parent);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(bound<QRadioButton>(first, box));
    layout->addWidget(bound<QRadioButton>(second, box));
    return box;
}

QWidget* ConfigureView::makeLogPage() {
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(bound<QCheckBox>(form_.chkEnableLog, page));
    auto* box = bound<QGroupBox>(form_.frameDataLogging, page);
    auto* rows = new QVBoxLayout(box);
    for (forms::OptionButton* option :
         {&form_.optLogOff, &form_.optLogForever, &form_.optLogFixedNumber})
        rows->addWidget(bound<QRadioButton>(*option, box));
    auto* limit = new QHBoxLayout;
    limit->addSpacing(24);
    limit->addWidget(bound<QLabel>(form_.lblMessageLimit, box));
    limit->addWidget(bound<QLineEdit>(form_.txtMessageLimit, box));
    limit->addStretch();
    rows->addLayout(limit);
    layout->addWidget(box);
    layout->addStretch();
    return page;
}

void ConfigureView::leaveOutWaitingControls() {
    // They exist before their page does.
    for (const forms::Label* label :
         {&form_.lblPortDisabled, &form_.lblSPIPinsDisabled, &form_.lblExtraPinsDisabled})
        binder_.leaveOut(*label);
    for (const forms::Frame* frame : {&form_.frameStandardPins, &form_.frameOpenCollectorPins,
                                      &form_.frameUSBExtraPins, &form_.frameSPIBaudRate})
        binder_.leaveOut(*frame);
}

void ConfigureView::closeEvent(QCloseEvent* event) {
    event->ignore();
    form_.setVisible(false);
}

void ConfigureView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        form_.setVisible(false);
    else
        QDialog::keyPressEvent(event);
}

} // namespace bitlux::gui
