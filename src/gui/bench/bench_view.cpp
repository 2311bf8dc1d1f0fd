#include "gui/bench/bench_view.h"

#include "platform/failure.h"
#include "workbench/library_chips.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::gui {

namespace {

/// Shows a level as "1" or "0", highlighted when high.
void showLevel(QLabel& label, bool high) {
    const QString text = high ? "1" : "0";
    if (label.text() == text)
        return;
    label.setText(text);
    label.setBackgroundRole(high ? QPalette::Highlight : QPalette::AlternateBase);
    label.setForegroundRole(high ? QPalette::HighlightedText : QPalette::WindowText);
}

QLabel* lamp(QWidget* parent, const QString& name) {
    auto* label = new QLabel(parent);
    label->setAlignment(Qt::AlignCenter);
    label->setAutoFillBackground(true);
    label->setObjectName(name);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance("000"));
    return label;
}

QGridLayout* lampGrid(QWidget* parent) {
    auto* grid = new QGridLayout(parent);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    return grid;
}

QLabel* frameLabel(QWidget* parent, const QString& name) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void showFrame(QLabel& label, const UsbFrame& frame) {
    const QString text = QString::fromStdString(fmt::format("{:02X}", fmt::join(frame, " ")));
    if (label.text() != text)
        label.setText(text);
}

} // namespace

BenchView::BenchView(VirtualBench& bench, const Program& program, const QString& device,
                     Binder& binder, QWidget* parent)
    : QDockWidget("Virtual bench", parent), bench_(bench), program_(program), binder_(binder) {
    setObjectName("bench");
    setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    auto* content = new QWidget(this);
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(14, 4, 14, 8);
    row->setSpacing(10);
    addDevice(*row, device);
    row->addSpacing(8);
    addDongle(*row);
    row->addSpacing(8);
    portPins_ = makePortPins();
    donglePins_ = makeDonglePins();
    row->addWidget(portPins_);
    row->addWidget(donglePins_);
    row->addStretch();
    setWidget(content);
    showChip();
    flushed_ = binder.flushed.follow([this] { follow(); });
    follow();
}

void BenchView::addDevice(QBoxLayout& row, const QString& device) {
    device_ = new QComboBox(this);
    device_->setObjectName("bench.device");
    fillDevices();
    device_->setCurrentText(device);
    device_->installEventFilter(this);
    auto* title = new QLabel("Dev&ice:", this);
    title->setBuddy(device_);
    replies_ = new QLineEdit(this);
    replies_->setObjectName("bench.replies");
    replies_->setPlaceholderText("replies, as 1234,FF00");
    replies_->setToolTip("Answers of the coming words, hexadecimal; the last one stays");
    replies_->setMinimumWidth(replies_->fontMetrics().horizontalAdvance("replies, as 1234,FF00 "));
    replies_->hide();
    problem_ = new QLabel(this);
    problem_->hide();
    chipShown_ = new QCheckBox("Sho&w chip", this);
    chipShown_->setObjectName("bench.chip");
    chipShown_->setToolTip("Shows the state, the flags, pins and faults of the chip");
    chipShown_->setChecked(true);
    for (QWidget* widget : {static_cast<QWidget*>(title), static_cast<QWidget*>(device_),
                            static_cast<QWidget*>(chipShown_), static_cast<QWidget*>(replies_),
                            static_cast<QWidget*>(problem_)})
        row.addWidget(widget);
    connect(device_, &QComboBox::currentTextChanged, this, [this] { connectDevice(); });
    connect(replies_, &QLineEdit::editingFinished, this, [this] { connectDevice(); });
}

void BenchView::showChip() {
    const bool isChip = bench_.dongle.chip() != nullptr;
    chipShown_->setVisible(isChip);
    if (isChip && chip_ != nullptr) {
        chip_->chipChanged();
    } else if (isChip) {
        chip_ = new ChipView(bench_, binder_, parentWidget());
        if (auto* window = qobject_cast<QMainWindow*>(parentWidget())) {
            window->addDockWidget(Qt::RightDockWidgetArea, chip_);
            window->resizeDocks({chip_}, {chip_->sizeHint().width()}, Qt::Horizontal);
        }
        connect(chipShown_, &QCheckBox::toggled, chip_, &QWidget::setVisible);
        chip_->closed.subscribe([this] { chipShown_->setChecked(false); });
    }
    if (chip_ != nullptr)
        chip_->setVisible(isChip && chipShown_->isChecked());
}

void BenchView::showModel(const chips::Chip& chip, const QWidget& panel) {
    if (chip.findDevice(device_->currentText().toStdString()) == nullptr) {
        fillDevices();
        device_->setCurrentText(QString::fromStdString(chip.devices.front().name));
    }
    if (bench_.dongle.chip() == nullptr) // the bench shows the reason
        return;
    chipShown_->setChecked(true);
    chip_->openBeside(panel);
}

void BenchView::addDongle(QBoxLayout& row) {
    plugged_ = new QCheckBox("Don&gle plugged in", this);
    plugged_->setObjectName("bench.dongle");
    plugged_->setToolTip("Plugs the dongle in and pulls it out; the program looks for it at every "
                         "change of page");
    plugged_->setChecked(bench_.dongle.plugged());
    row.addWidget(plugged_);
    connect(plugged_, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            bench_.dongle.plug();
        else
            bench_.dongle.unplug();
        follow();
    });
}

QLabel* BenchView::addLamp(QGridLayout& grid, int column, const QString& title,
                           const QString& name) {
    auto* number = new QLabel(title, this);
    number->setAlignment(Qt::AlignCenter);
    auto* level = lamp(this, name);
    grid.addWidget(number, 0, column);
    grid.addWidget(level, 1, column);
    return level;
}

QWidget* BenchView::makePortPins() {
    auto* pins = new QWidget(this);
    QGridLayout& grid = *lampGrid(pins);
    grid.addWidget(new QLabel("Pin", this), 0, 0);
    grid.addWidget(new QLabel("Level", this), 1, 0);
    for (int bit = 0; bit < 8; ++bit)
        data_[static_cast<std::size_t>(bit)] =
            addLamp(grid, bit + 1, QString::number(bit + 2), QString("bench.data%1").arg(bit));
    const std::array<const char*, 4> controlPins{"1", "14", "16", "17"};
    for (std::size_t bit = 0; bit < controlPins.size(); ++bit)
        control_[bit] = addLamp(grid, static_cast<int>(bit) + 10, controlPins[bit],
                                QString("bench.control%1").arg(bit));
    dataOut_ = addLamp(grid, 15, "DO", "bench.dataOut");
    for (const int gap : {9, 14})
        grid.setColumnMinimumWidth(gap, 8);
    return pins;
}

QWidget* BenchView::makeDonglePins() {
    auto* pins = new QWidget(this);
    QGridLayout& grid = *lampGrid(pins);
    grid.addWidget(new QLabel("OUT", this), 0, 0);
    grid.addWidget(new QLabel("IN", this), 1, 0);
    frameOut_ = frameLabel(this, "bench.frameOut");
    frameIn_ = frameLabel(this, "bench.frameIn");
    grid.addWidget(frameOut_, 0, 1);
    grid.addWidget(frameIn_, 1, 1);
    grid.setColumnMinimumWidth(2, 8);
    for (int pin = 0; pin < 9; ++pin)
        extraPins_[static_cast<std::size_t>(pin)] =
            addLamp(grid, pin + 3, pin < 5 ? QString("D%1").arg(pin) : QString("C%1").arg(pin - 5),
                    QString("bench.extraPin%1").arg(pin));
    return pins;
}

void BenchView::fillDevices() {
    for (const std::string& name : benchDeviceNames())
        if (const QString text = QString::fromStdString(name); device_->findText(text) < 0)
            device_->addItem(text);
}

/// Adds chips that were opened since.
bool BenchView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == device_ && event->type() == QEvent::FocusIn)
        fillDevices();
    return QDockWidget::eventFilter(watched, event);
}

void BenchView::connectDevice() {
    const std::string name = device_->currentText().toStdString();
    replies_->setVisible(name == "scripted");
    try {
        std::vector<Reply> replies;
        if (name == "scripted" && !replies_->text().isEmpty())
            for (const QString& reply : replies_->text().split(','))
                replies.push_back(replyFromHex(reply.trimmed().toStdString()));
        bench_.connect(makeBenchDevice(name, replies));
        showChip();
        problem_->hide();
    } catch (const Failure& failure) {
        problem_->setText(failure.what());
        problem_->show();
    }
    follow();
}

std::vector<std::string> BenchView::commandOptions() const {
    const std::string name = device_->currentText().toStdString();
    if (name != "scripted")
        return {"--bench", name};
    return {"--bench", name, "--replies", replies_->text().remove(' ').toStdString()};
}

void BenchView::follow() {
    const bool onDongle = program_.engine().usesDongle();
    portPins_->setVisible(!onDongle);
    donglePins_->setVisible(onDongle);
    if (onDongle) {
        followDongle();
        return;
    }
    const SimulatedPort& port = bench_.port;
    for (int bit = 0; bit < 8; ++bit)
        showLevel(*data_[static_cast<std::size_t>(bit)], ((port.dataPins() >> bit) & 1) != 0);
    for (int bit = 0; bit < 4; ++bit) {
        const bool inverted = bit != 2;
        showLevel(*control_[static_cast<std::size_t>(bit)],
                  (((port.controlPins() >> bit) & 1) != 0) != inverted);
    }
    showLevel(*dataOut_, port.dataOut());
}

void BenchView::followDongle() {
    const SimulatedDongle& dongle = bench_.dongle;
    showFrame(*frameOut_, dongle.lastOut());
    showFrame(*frameIn_, dongle.lastIn());
    for (int pin = 0; pin < 9; ++pin)
        showLevel(*extraPins_[static_cast<std::size_t>(pin)],
                  ((dongle.extraPins() >> pin) & 1) != 0);
}

void addBench(MainWindow& window, VirtualBench& bench, const QString& device) {
    auto* view = new BenchView(bench, window.program(), device, window.binder(), &window);
    window.addDockWidget(Qt::BottomDockWidgetArea, view);
    window.program().copies().bench = [view = QPointer(view)] {
        return view ? view->commandOptions() : std::vector<std::string>();
    };
    window.showModelsBy(
        [view](const chips::Chip& chip, const QWidget& panel) { view->showModel(chip, panel); });
}

} // namespace bitlux::gui
