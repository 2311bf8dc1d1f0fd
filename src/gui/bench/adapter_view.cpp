#include "gui/bench/bus_view.h"

#include "gui/desktop/theme.h"
#include "gui/widgets/elided_label.h"
#include "transfer/pin_layer.h"

#include <array>
#include <optional>
#include <vector>

#include <QGridLayout>
#include <QLabel>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::gui {

namespace {

constexpr int lineCount = 8;

/// The signals of a word by the lines that carry them; empty for the other lines.
std::array<std::string, lineCount> signalNames(const AdapterWiring& wiring,
                                               const Session& session) {
    std::array<std::string, lineCount> names;
    const auto put = [&](int pin, const char* signal) {
        if (const std::optional<int> line = wiring.lineOf(pin))
            names.at(static_cast<std::size_t>(*line)) = signal;
    };
    constexpr int firstDataPin = 2;
    put(session.ClockPin + firstDataPin, "CLK");
    put(session.DIPin + firstDataPin, "DI");
    put(session.CSPin + firstDataPin, "CS");
    for (const int pin : {12, 13, 15})
        if (ConvertPin(std::to_string(pin)) == session.DOPin)
            put(pin, "DO");
    return names;
}

class AdapterView : public BusView {
public:
    AdapterView(const SimulatedAdapter& adapter, const Session& session, QWidget* parent)
        : BusView(parent), adapter_(adapter), session_(session) {
        grid().addWidget(new QLabel("Line", this), lineRow, 0);
        grid().addWidget(new QLabel("Signal", this), signalRow, 0);
        grid().addWidget(new QLabel("Level", this), levelRow, 0);
        int column = 1;
        for (int line = 0; line < lineCount; ++line, ++column)
            addLineOf(line, column);
        constexpr int gapWidth = 8;
        grid().setColumnMinimumWidth(column++, gapWidth);
        auto* title = new ElidedLabel(this);
        title->setText("Last exchange");
        count_ = new QLabel(this);
        bytes_ = new ElidedLabel(this);
        bytes_->setObjectName("bench.bytes");
        bytes_->setFont(fixedFont());
        grid().addWidget(title, lineRow, column);
        grid().addWidget(count_, signalRow, column);
        grid().addWidget(bytes_, levelRow, column);
        grid().setColumnStretch(column, 1);
    }

    void follow() override {
        const std::array<std::string, lineCount> names =
            signalNames(adapter_.settings().wiring, session_);
        for (std::size_t line = 0; line < lineCount; ++line)
            followLine(line, names[line]);
        if (const std::vector<std::uint8_t>& bytes = adapter_.lastBytes(); bytes != shownBytes_)
            showBytes(bytes);
    }

private:
    enum Row { lineRow, signalRow, levelRow };

    void addLineOf(int line, int column) {
        const auto at = static_cast<std::size_t>(line);
        levels_[at] =
            addLine(column, QString("D%1").arg(line), QString("bench.line%1").arg(line), levelRow);
        // Alike with a border and without.
        levels_[at]->setMinimumHeight(levels_[at]->fontMetrics().height() + 2);
        signals_[at] = new QLabel(this);
        signals_[at]->setAlignment(Qt::AlignCenter);
        grid().addWidget(signals_[at], signalRow, column);
    }
    void followLine(std::size_t line, const std::string& signal) {
        const auto has = [line](std::uint8_t lines) { return ((lines >> line) & 1U) != 0; };
        const bool isInput = !has(adapter_.driven());
        showLevel(*levels_[line], has(adapter_.lines()), isInput);
        const std::string title =
            signal.empty() ? fmt::format("D{}", line) : fmt::format("D{} {}", line, signal);
        const QString tip = QString::fromStdString(
            fmt::format("{}: {}", title, isInput ? "input" : "driven by the adapter"));
        if (levels_[line]->toolTip() == tip)
            return;
        signals_[line]->setText(QString::fromStdString(signal));
        levels_[line]->setToolTip(tip);
        levels_[line]->setAccessibleDescription(tip);
    }
    void showBytes(const std::vector<std::uint8_t>& bytes) {
        shownBytes_ = bytes;
        count_->setText(QString::fromStdString(
            fmt::format("{} byte{}", bytes.size(), bytes.size() == 1 ? "" : "s")));
        bytes_->setText(QString::fromStdString(fmt::format("{:02X}", fmt::join(bytes, " "))));
    }

    const SimulatedAdapter& adapter_;
    const Session& session_;
    std::array<QLabel*, lineCount> signals_{};
    std::array<QLabel*, lineCount> levels_{};
    QLabel* count_ = nullptr;
    ElidedLabel* bytes_ = nullptr;
    std::vector<std::uint8_t> shownBytes_;
};

} // namespace

BusView* makeAdapterView(const SimulatedAdapter& adapter, const Session& session, QWidget* parent) {
    return new AdapterView(adapter, session, parent);
}

} // namespace bitlux::gui
