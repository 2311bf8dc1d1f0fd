#include "gui/bench_view.h"

#include "platform/failure.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace bitlux::gui {

namespace {

/// Shows a level as "1" or "0", lit when high.
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

} // namespace

BenchView::BenchView(SimulatedPort& port, const QString& device, Binder& binder, QWidget* parent)
    : QDockWidget("Virtual bench", parent), port_(port) {
    setObjectName("bench");
    setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    auto* content = new QWidget(this);
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(14, 4, 14, 8);
    row->setSpacing(10);
    addDevice(*row, device);
    row->addSpacing(16);
    addPins(*row);
    row->addStretch();
    setWidget(content);
    flushed_ = binder.flushed.follow([this] { follow(); });
    follow();
}

void BenchView::addDevice(QBoxLayout& row, const QString& device) {
    device_ = new QComboBox(this);
    device_->setObjectName("bench.device");
    for (const std::string& name : deviceNames())
        device_->addItem(QString::fromStdString(name));
    device_->setCurrentText(device);
    auto* title = new QLabel("&Device:", this);
    title->setBuddy(device_);
    replies_ = new QLineEdit(this);
    replies_->setObjectName("bench.replies");
    replies_->setPlaceholderText("replies, as 1234,FF00");
    replies_->setToolTip("Answers of the coming words, hexadecimal; the last one stays");
    replies_->setMinimumWidth(replies_->fontMetrics().horizontalAdvance("replies, as 1234,FF00 "));
    replies_->hide();
    problem_ = new QLabel(this);
    problem_->hide();
    for (QWidget* widget : {static_cast<QWidget*>(title), static_cast<QWidget*>(device_),
                            static_cast<QWidget*>(replies_), static_cast<QWidget*>(problem_)})
        row.addWidget(widget);
    connect(device_, &QComboBox::currentTextChanged, this, [this] { connectDevice(); });
    connect(replies_, &QLineEdit::editingFinished, this, [this] { connectDevice(); });
}

void BenchView::addPins(QBoxLayout& row) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    grid->addWidget(new QLabel("Pin", this), 0, 0);
    grid->addWidget(new QLabel("Level", this), 1, 0);
    const auto addLamp = [&](int column, const QString& title, const QString& name) {
        auto* number = new QLabel(title, this);
        number->setAlignment(Qt::AlignCenter);
        auto* level = lamp(this, name);
        grid->addWidget(number, 0, column);
        grid->addWidget(level, 1, column);
        return level;
    };
    for (int bit = 0; bit < 8; ++bit)
        data_[static_cast<std::size_t>(bit)] =
            addLamp(bit + 1, QString::number(bit + 2), QString("bench.data%1").arg(bit));
    dataOut_ = addLamp(10, "DO", "bench.dataOut");
    grid->setColumnMinimumWidth(9, 8);
    row.addLayout(grid);
}

void BenchView::connectDevice() {
    const std::string name = device_->currentText().toStdString();
    replies_->setVisible(name == "scripted");
    try {
        std::vector<Reply> replies;
        if (name == "scripted" && !replies_->text().isEmpty())
            for (const QString& reply : replies_->text().split(','))
                replies.push_back(replyFromHex(reply.trimmed().toStdString()));
        port_.connect(makeDevice(name, replies));
        problem_->hide();
    } catch (const Failure& failure) {
        problem_->setText(failure.what());
        problem_->show();
    }
    follow();
}

void BenchView::follow() {
    for (int bit = 0; bit < 8; ++bit)
        showLevel(*data_[static_cast<std::size_t>(bit)], ((port_.dataPins() >> bit) & 1) != 0);
    showLevel(*dataOut_, port_.dataOut());
}

} // namespace bitlux::gui
