#include "gui/bench/bus_view.h"

#include <array>

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::gui {

namespace {

constexpr int gapWidth = 8;

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

class PortView : public BusView {
public:
    PortView(const SimulatedPort& port, QWidget* parent) : BusView(parent), port_(port) {
        grid().addWidget(new QLabel("Pin", this), 0, 0);
        grid().addWidget(new QLabel("Level", this), 1, 0);
        for (int bit = 0; bit < 8; ++bit)
            data_[static_cast<std::size_t>(bit)] =
                addLine(bit + 1, QString::number(bit + 2), QString("bench.data%1").arg(bit));
        const std::array<const char*, 4> controlPins{"1", "14", "16", "17"};
        for (std::size_t bit = 0; bit < controlPins.size(); ++bit)
            control_[bit] = addLine(static_cast<int>(bit) + 10, controlPins[bit],
                                    QString("bench.control%1").arg(bit));
        constexpr int last = 15;
        dataOut_ = addLine(last, "DO", "bench.dataOut");
        for (const int gap : {9, 14})
            grid().setColumnMinimumWidth(gap, gapWidth);
        grid().setColumnStretch(last + 1, 1);
    }

    void follow() override {
        for (int bit = 0; bit < 8; ++bit)
            showLevel(*data_[static_cast<std::size_t>(bit)], ((port_.dataPins() >> bit) & 1) != 0);
        for (int bit = 0; bit < 4; ++bit) {
            const bool inverted = bit != 2;
            showLevel(*control_[static_cast<std::size_t>(bit)],
                      (((port_.controlPins() >> bit) & 1) != 0) != inverted);
        }
        showLevel(*dataOut_, port_.dataOut());
    }

private:
    const SimulatedPort& port_;
    std::array<QLabel*, 8> data_{};
    std::array<QLabel*, 4> control_{};
    QLabel* dataOut_ = nullptr;
};

class DongleView : public BusView {
public:
    DongleView(const SimulatedDongle& dongle, QWidget* parent)
        : BusView(parent),
          dongle_(dongle),
          frameOut_(frameLabel(this, "bench.frameOut")),
          frameIn_(frameLabel(this, "bench.frameIn")) {
        grid().addWidget(new QLabel("OUT", this), 0, 0);
        grid().addWidget(new QLabel("IN", this), 1, 0);
        grid().addWidget(frameOut_, 0, 1);
        grid().addWidget(frameIn_, 1, 1);
        grid().setColumnMinimumWidth(2, gapWidth);
        int column = 3;
        for (int pin = 0; pin < 9; ++pin)
            extraPins_[static_cast<std::size_t>(pin)] =
                addLine(column++, pin < 5 ? QString("D%1").arg(pin) : QString("C%1").arg(pin - 5),
                        QString("bench.extraPin%1").arg(pin));
        grid().setColumnStretch(column, 1);
    }

    void follow() override {
        showFrame(*frameOut_, dongle_.lastOut());
        showFrame(*frameIn_, dongle_.lastIn());
        for (int pin = 0; pin < 9; ++pin)
            showLevel(*extraPins_[static_cast<std::size_t>(pin)],
                      ((dongle_.extraPins() >> pin) & 1) != 0);
    }

private:
    const SimulatedDongle& dongle_;
    QLabel* frameOut_;
    QLabel* frameIn_;
    std::array<QLabel*, 9> extraPins_{};
};

} // namespace

BusView::BusView(QWidget* parent) : QWidget(parent), grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(4);
    grid_->setVerticalSpacing(2);
}

QLabel* BusView::addLine(int column, const QString& title, const QString& name, int levelRow) {
    auto* number = new QLabel(title, this);
    number->setAlignment(Qt::AlignCenter);
    auto* level = new QLabel(this);
    level->setAlignment(Qt::AlignCenter);
    level->setAutoFillBackground(true);
    level->setObjectName(name);
    level->setMinimumWidth(level->fontMetrics().horizontalAdvance("000"));
    grid_->addWidget(number, 0, column);
    grid_->addWidget(level, levelRow, column);
    return level;
}

void showLevel(QLabel& label, bool high, bool isInput) {
    const QString text = high ? "1" : "0";
    if (label.text() == text && label.autoFillBackground() != isInput)
        return;
    label.setText(text);
    label.setAutoFillBackground(!isInput);
    label.setFrameStyle(isInput ? QFrame::StyledPanel : QFrame::NoFrame);
    const bool marked = high && !isInput;
    label.setBackgroundRole(marked ? QPalette::Highlight : QPalette::AlternateBase);
    label.setForegroundRole(marked ? QPalette::HighlightedText : QPalette::WindowText);
}

BusView* makePortView(const SimulatedPort& port, QWidget* parent) {
    return new PortView(port, parent);
}

BusView* makeDongleView(const SimulatedDongle& dongle, QWidget* parent) {
    return new DongleView(dongle, parent);
}

} // namespace bitlux::gui
