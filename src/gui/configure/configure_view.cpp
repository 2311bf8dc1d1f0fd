#include "gui/configure/configure_view.h"

#include "config/word_length_note.h"
#include "gui/configure/type_diagram.h"
#include "gui/desktop/theme.h"
#include "gui/widgets/page_keys.h"

#include <array>

#include <QFormLayout>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

QLabel* noteLabel(const QString& text, QWidget* parent) {
    auto* note = new QLabel(text, parent);
    note->setWordWrap(true);
    const int width = note->fontMetrics().averageCharWidth() * 80;
    note->setMinimumSize(width, note->heightForWidth(width));
    return note;
}

} // namespace

ConfigureView::ConfigureView(ConfigureDialog& form, Binder& binder, QWidget* parent)
    : FormDialog(form, form.cmdCancel, binder, parent),
      form_(form),
      binder_(binder),
      pinMarks_(form) {
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    tabs_ = binder_.make<QTabBar>(form_.TabStripConfig, this);
    tabs_->setExpanding(false);
    tabs_->setDrawBase(false);
    layout->addWidget(tabs_);
    auto* sheet = new QFrame(this);
    sheet->setFrameShape(QFrame::StyledPanel);
    auto* pages = new QGridLayout(sheet);
    for (int page = 0; page < pageCount; ++page) {
        auto* widget = new QWidget(sheet);
        binder_.bind(form_.FrameConfig(page + 1), *widget);
        pages->addWidget(widget, 0, 0); // all in one cell; one is visible
        pages_[static_cast<std::size_t>(page)] = widget;
    }
    layout->addWidget(sheet, 1);
    layout->addSpacing(8);
    layout->addWidget(makeButtons({&form_.cmdOK, &form_.cmdCancel, &form_.cmdApply}));
    addPageKeys(*tabs_, *this);
    // After the slot that the binder has connected.
    connect(findChild<QPushButton*>(QString::fromStdString(form_.cmdOK.fullName())),
            &QPushButton::clicked, this, [this] {
                if (!form_.visible())
                    accepted.raise();
            });
    leaveOutHiddenControls();
    flushed_ = binder_.flushed.follow([this] { followForm(); });
    followForm();
    // The size of the largest page, so that changing pages moves nothing.
    const QSize wanted(fontMetrics().averageCharWidth() * 92, fontMetrics().height() * 45);
    resize(wanted.boundedTo(QGuiApplication::primaryScreen()->availableSize() - QSize(40, 60)));
}

void ConfigureView::showEvent(QShowEvent* event) {
    FormDialog::showEvent(event);
    if (event->spontaneous())
        return;
    wantsFocus_ = true;
    binder_.flushSoon();
}

bool ConfigureView::focusIsHidden() const {
    const QWidget* focused = focusWidget();
    return focused != nullptr && !focused->isVisibleTo(this);
}

/// When the page changes, the toolkit would move the focus to any next widget.
bool ConfigureView::focusNextPrevChild(bool next) {
    return focusIsHidden() || FormDialog::focusNextPrevChild(next);
}

void ConfigureView::focusPage() {
    for (QWidget* page : pages_)
        if (QWidget* field = page->isVisible() ? firstField(*page) : nullptr) {
            wantsFocus_ = false;
            field->setFocus(Qt::TabFocusReason); // selects the text of a field
        }
}

void ConfigureView::followForm() {
    makeShownPages();
    if (wantsFocus_ || focusIsHidden())
        focusPage();
    for (std::size_t i = 0; i < diagrams_.size(); ++i)
        if (diagrams_[i] != nullptr)
            diagrams_[i]->setType(static_cast<int>(i) + 1,
                                  {.msbFirst = form_.optMSBfirst.value(),
                                   .selectedWhenHigh = form_.optCSpositive.value()});
    pinMarks_.follow();
    followWordLength();
}

void ConfigureView::followWordLength() {
    if (wordLengthNote_ == nullptr)
        return;
    const WordLengthNote note = wordLengthNote(form_.cmbSPIWordLength.text(), form_.usesDongle());
    const QString text = QString::fromStdString(note.text);
    showWarning(*wordLengthNote_, !note.fits);
    wordLengthNote_->setVisible(!text.isEmpty());
    if (wordLengthNote_->text() == text)
        return;
    wordLengthNote_->setText(text);
    wordLength_->setAccessibleDescription(text);
}

QComboBox* ConfigureView::makePinField(forms::ComboBox& control, QWidget* parent) {
    auto* field = binder_.make<QComboBox>(control, parent);
    pinMarks_.add(control, *field);
    return field;
}

void ConfigureView::makeShownPages() {
    constexpr std::array makers{&ConfigureView::makeGeneralPage, &ConfigureView::makePinsPage,
                                &ConfigureView::makeExtraPinsPage, &ConfigureView::makeLogPage};
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        if (made_[page] || !form_.FrameConfig(static_cast<int>(page) + 1).visible())
            continue;
        made_[page] = true;
        (this->*makers[page])(pages_[page]);
        putInTabOrder(*tabs_, *pages_[page]);
        layout()->activate();
        resize(size().expandedTo(layout()->sizeHint()));
    }
}

void ConfigureView::makeGeneralPage(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    auto* fields = new QFormLayout;
    fields->addRow("Part &name:", binder_.make<QLineEdit>(form_.txtPartName, page));
    auto* length = new QVBoxLayout;
    auto* lengthRow = new QHBoxLayout;
    length->addLayout(lengthRow);
    wordLength_ = binder_.make<QComboBox>(form_.cmbSPIWordLength, page);
    lengthRow->addWidget(wordLength_);
    lengthRow->addWidget(binder_.make<QLabel>(form_.lblSPIBitRange, page));
    lengthRow->addStretch();
    wordLengthNote_ = new QLabel(page);
    wordLengthNote_->setObjectName("wordLengthNote");
    length->addWidget(wordLengthNote_);
    fields->addRow("&Bits of a word:", length);
    qobject_cast<QLabel*>(fields->labelForField(length))->setBuddy(wordLength_);
    auto* display = new QHBoxLayout;
    display->addWidget(binder_.make<QRadioButton>(form_.optBinary, page));
    display->addWidget(binder_.make<QRadioButton>(form_.optHex, page));
    display->addStretch();
    fields->addRow("Words are shown in:", display);
    layout->addLayout(fields);
    layout->addWidget(makePortBox(page));
    layout->addWidget(makePartsBox(page));
    layout->addStretch();
}

QWidget* ConfigureView::makePortBox(QWidget* page) {
    form_.ChkSerialPort.setTooltip("With the tick words go through the dongle, without it through "
                                   "the parallel port or FTDI adapter that is chosen below");
    form_.Btn_ParallelPort.setTooltip("Looks for parallel ports and FTDI adapters");
    form_.cmbPortsAvailable.setTooltip("The parallel ports and FTDI adapters that were found; "
                                       "Setup Parallel Port looks again");
    auto* box = new QGroupBox("Interface", page);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(binder_.make<QCheckBox>(form_.ChkSerialPort, box));
    auto* setup = binder_.make<QPushButton>(form_.Btn_ParallelPort, box);
    setup->setAutoDefault(false);
    layout->addWidget(setup, 0, Qt::AlignLeft);
    layout->addWidget(binder_.make<QLabel>(form_.lblLPTaddress, box));
    layout->addWidget(binder_.make<QComboBox>(form_.cmbPortsAvailable, box));
    for (const auto& control : form_.chkHardCodeLPT)
        layout->addWidget(binder_.make<QCheckBox>(*control, box));
    auto* rates = binder_.make<QGroupBox>(form_.frameSPIBaudRate, box);
    auto* row = new QHBoxLayout(rates);
    for (const auto& rate : form_.SPIBaudRate)
        row->addWidget(binder_.make<QRadioButton>(*rate, rates));
    row->addStretch();
    layout->addWidget(rates);
    return box;
}

QWidget* ConfigureView::makePartsBox(QWidget* page) {
    auto* box = new QGroupBox("Panels of parts", page);
    auto* grid = new QGridLayout(box);
    int place = 0;
    for (forms::CheckBox* part :
         {&form_.CheckEnable72361, &form_.CheckEnable72517, &form_.CheckEnable72518,
          &form_.CheckEnable72537, &form_.CheckEnable72516}) {
        grid->addWidget(binder_.make<QCheckBox>(*part, box), place / 3, place % 3);
        ++place;
    }
    return box;
}

void ConfigureView::makePinsPage(QWidget* page) {
    auto* grid = new QGridLayout(page);
    grid->addWidget(pairBox(form_.frameSPIBitOrder, form_.optMSBfirst, form_.optLSBfirst, page), 0,
                    0);
    grid->addWidget(pairBox(form_.frameCS, form_.optCSnegative, form_.optCSpositive, page), 0, 1);
    grid->addWidget(pairBox(form_.frameDI, form_.optDIpolarity_pos, form_.optDIpolarity_neg, page),
                    1, 0);
    grid->addWidget(pairBox(form_.frameDO, form_.optDOpolarity_pos, form_.optDOpolarity_neg, page),
                    1, 1);
    grid->addWidget(makePinBox(page), 2, 0, 1, 2);
    grid->addWidget(makeTypeBox(page), 3, 0, 1, 2);
    grid->setRowStretch(4, 1);
}

QWidget* ConfigureView::makePinBox(QWidget* page) {
    auto* box = binder_.make<QGroupBox>(form_.framePortPins, page);
    auto* rows = new QVBoxLayout(box);
    auto* row = new QHBoxLayout;
    rows->addLayout(row);
    const std::array<std::pair<const char*, forms::ComboBox*>, 4> pins{{{"CS:", &form_.cmbCS},
                                                                        {"DI:", &form_.cmbDI},
                                                                        {"CLK:", &form_.cmbCLK},
                                                                        {"DO:", &form_.cmbDO}}};
    for (const auto& [title, control] : pins) {
        auto* label = new QLabel(title, box);
        auto* list = makePinField(*control, box);
        label->setBuddy(list);
        row->addWidget(label);
        row->addWidget(list);
        row->addSpacing(12);
    }
    row->addStretch();
    rows->addWidget(pinMarks_.makeNote(box));
    return box;
}

QWidget* ConfigureView::makeTypeBox(QWidget* page) {
    auto* box = binder_.make<QGroupBox>(form_.types.frameSPItype, page);
    auto* layout = new QVBoxLayout(box);
    auto* tabs = binder_.make<QTabBar>(form_.types.TabStripSPItype, box);
    tabs->setUsesScrollButtons(false);
    tabs->setDrawBase(false);
    layout->addWidget(tabs);
    auto* pictures = new QGridLayout;
    for (int type = 1; type <= 8; ++type)
        pictures->addWidget(makePicture(type, box), 0, 0); // one is visible
    layout->addLayout(pictures, 1);
    return box;
}

QWidget* ConfigureView::makePicture(int type, QWidget* parent) {
    TypePage& types = form_.types;
    auto* picture = new QWidget(parent);
    binder_.bind(types.frameSPIpicture(type), *picture);
    auto* layout = new QVBoxLayout(picture);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto* diagram = new TypeDiagram(type, picture);
    diagrams_[static_cast<std::size_t>(type - 1)] = diagram;
    layout->addWidget(diagram, 1);
    auto* polarity = new QHBoxLayout;
    polarity->addWidget(binder_.make<QLabel>(types.lblSPINotePolarity(type), picture));
    polarity->addStretch();
    if (type >= types.lblNonStandard.first())
        polarity->addWidget(binder_.make<QLabel>(types.lblNonStandard(type), picture));
    layout->addWidget(binder_.make<QLabel>(types.lblSPINoteRead(type), picture));
    layout->addWidget(binder_.make<QLabel>(types.lblSPINoteToggle(type), picture));
    layout->addLayout(polarity);
    return picture;
}

void ConfigureView::makeExtraPinsPage(QWidget* page) {
    ExtraPinPage& pins = form_.extraPins;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(makePinRows(
        pins.frameStandardPins, pins.dataPins,
        "These are standard push-pull outputs which can generally source 2.6 mA and sink 24 mA.  "
        "However, different manufacturers have different limits.",
        page));
    layout->addWidget(makePinRows(
        pins.frameOpenCollectorPins, pins.controlPins,
        "These are open-collector outputs which can typically sink 1.5 mA, and which typically "
        "have a 4.7K resistor pull-up to 5 V.  However, different manufacturers may have different "
        "specifications.",
        page));
    layout->addWidget(pinMarks_.makeNote(page));
    layout->addWidget(makeDonglePins(page));
    layout->addStretch();
}

QWidget* ConfigureView::makePinRows(forms::Frame& frame, const PinRows& rows, const QString& note,
                                    QWidget* page) {
    auto* box = binder_.make<QGroupBox>(frame, page);
    auto* grid = new QGridLayout(box);
    grid->addWidget(noteLabel(note, box), 0, 0, 1, 3);
    grid->addWidget(new QLabel("Name", box), 1, 1);
    grid->addWidget(new QLabel("Pin", box), 1, 2);
    for (int row = 0; row < rows.count(); ++row) {
        grid->addWidget(binder_.make<QCheckBox>(rows.enable(row), box), row + 2, 0);
        grid->addWidget(binder_.make<QLineEdit>(rows.name(row), box), row + 2, 1);
        grid->addWidget(makePinField(rows.assignment(row), box), row + 2, 2);
    }
    grid->setColumnStretch(1, 1);
    return box;
}

QWidget* ConfigureView::makeDonglePins(QWidget* page) {
    ExtraPinPage& pins = form_.extraPins;
    auto* box = binder_.make<QGroupBox>(pins.frameUSBExtraPins, page);
    auto* grid = new QGridLayout(box);
    constexpr int dataPins = 5;
    grid->addWidget(
        noteLabel("These are standard CMOS push-pull outputs which can generally source 2.0 mA and "
                  "sink 1.6 mA. ",
                  box),
        0, 0, 1, 2);
    for (int pin = 0; pin <= pins.Check.last(); ++pin) {
        auto* enable = new QCheckBox(QString::fromStdString(ExtraPinPage::donglePinName(pin)), box);
        binder_.bind(pins.Check(pin), *enable);
        grid->addWidget(enable, 1 + pin % dataPins, pin / dataPins);
    }
    return box;
}

QGroupBox* ConfigureView::pairBox(forms::Frame& frame, forms::OptionButton& first,
                                  forms::OptionButton& second, QWidget* parent) {
    auto* box = binder_.make<QGroupBox>(frame, parent);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(binder_.make<QRadioButton>(first, box));
    layout->addWidget(binder_.make<QRadioButton>(second, box));
    return box;
}

void ConfigureView::makeLogPage(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(binder_.make<QCheckBox>(form_.chkEnableLog, page));
    auto* box = binder_.make<QGroupBox>(form_.frameDataLogging, page);
    auto* rows = new QVBoxLayout(box);
    for (forms::OptionButton* option :
         {&form_.optLogOff, &form_.optLogForever, &form_.optLogFixedNumber})
        rows->addWidget(binder_.make<QRadioButton>(*option, box));
    auto* limit = new QHBoxLayout;
    limit->addSpacing(24);
    limit->addWidget(binder_.make<QLabel>(form_.lblMessageLimit, box));
    auto* number = binder_.make<QLineEdit>(form_.txtMessageLimit, box);
    number->setMaximumWidth(number->fontMetrics().averageCharWidth() * 12);
    limit->addWidget(number);
    limit->addStretch();
    rows->addLayout(limit);
    layout->addWidget(box);
    layout->addStretch();
}

void ConfigureView::leaveOutHiddenControls() {
    // Nothing ever shows them.
    for (const forms::Control* control :
         {static_cast<forms::Control*>(&form_.lblPortDisabled),
          static_cast<forms::Control*>(&form_.lblSPIPinsDisabled),
          static_cast<forms::Control*>(&form_.extraPins.lblExtraPinsDisabled),
          static_cast<forms::Control*>(&form_.lstSortedPinNumbers)})
        binder_.leaveOut(*control);
}

} // namespace bitlux::gui
