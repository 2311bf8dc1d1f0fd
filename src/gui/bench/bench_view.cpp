#include "gui/bench/bench_view.h"

#include "platform/failure.h"
#include "workbench/library_chips.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

/// Plugs a device of the bench in and pulls it out.
template <typename Pluggable>
QCheckBox* plugBox(Pluggable& device, const QString& title, const QString& name, QWidget* parent) {
    auto* box = new QCheckBox(title, parent);
    box->setObjectName(name);
    box->setChecked(device.plugged());
    QObject::connect(box, &QCheckBox::toggled, parent, [&device](bool on) {
        if (on)
            device.plug();
        else
            device.unplug();
    });
    return box;
}

} // namespace

BenchView::BenchView(VirtualBench& bench, Program& program, const QString& device, Binder& binder,
                     QWidget* parent)
    : QDockWidget("Virtual bench", parent), bench_(bench), program_(program), binder_(binder) {
    setObjectName("bench");
    setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    auto* content = new QWidget(this);
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(14, 4, 14, 8);
    row->setSpacing(10);
    addDevice(*row, device);
    row->addSpacing(8);
    addPluggedIn(*row);
    row->addSpacing(8);
    bus_ = new QHBoxLayout;
    row->addLayout(bus_, 1);
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

void BenchView::addPluggedIn(QBoxLayout& row) {
    QCheckBox* dongle = plugBox(bench_.dongle, "Don&gle plugged in", "bench.dongle", this);
    dongle->setToolTip("Plugs the dongle in and pulls it out; the program looks for it at every "
                       "change of page");
    QCheckBox* adapter = plugBox(bench_.adapter, "Adapter pl&ugged in", "bench.adapter", this);
    adapter->setToolTip("Plugs an FTDI adapter in and pulls it out; the program looks for it at "
                        "Setup Parallel Port in the configuration");
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    row.addLayout(column);
    for (QCheckBox* box : {dongle, adapter}) {
        column->addWidget(box);
        connect(box, &QCheckBox::toggled, this, [this] { follow(); });
    }
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

BusView* BenchView::makeBusView(Bus bus) {
    switch (bus) {
    case Bus::Dongle:
        return makeDongleView(bench_.dongle, this);
    case Bus::Adapter:
        return makeAdapterView(bench_.adapter, program_.session(), this);
    case Bus::Port:
        break;
    }
    return makePortView(bench_.port, this);
}

void BenchView::follow() {
    const Bus inUse = program_.engine().usesDongle()           ? Bus::Dongle
                      : program_.adapters().inUse() != nullptr ? Bus::Adapter
                                                               : Bus::Port;
    BusView*& wanted = buses_.at(static_cast<std::size_t>(inUse));
    if (wanted == nullptr) {
        wanted = makeBusView(inUse);
        bus_->addWidget(wanted);
    }
    for (BusView* view : buses_)
        if (view != nullptr)
            view->setVisible(view == wanted);
    wanted->follow();
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
