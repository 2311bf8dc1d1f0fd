#include "gui/panels/zt72518/mode_diagram.h"

#include "gui/panels/sheet.h"
#include "panels/zt72518/mode_words.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <QHBoxLayout>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int requestPlace = static_cast<int>(zt72518::modeButtons.size());
constexpr int wakeUpPlace = 3;

/// Centres of the modes by the index of their buttons, Normal Request after them, in fractions of
/// the picture.
constexpr std::array<QPointF, requestPlace + 1> modePlaces{
    QPointF(0.50, 0.52), QPointF(0.84, 0.90), QPointF(0.16, 0.90), QPointF(0.72, 0.62),
    QPointF(0.50, 0.27), QPointF(0.84, 0.09), QPointF(0.16, 0.09), QPointF(0.16, 0.52)};

/// An arrow from mode to mode; several may belong to one transition.
struct Arrow {
    int line;
    int from;
    int to;
};

enum Mode : std::uint8_t { Normal, VddOn, VddOff, WakeUp, Init, Flash, Reset, Request };

constexpr std::array<Arrow, 12> arrows{{{0, Init, Normal},
                                        {1, VddOn, VddOff},
                                        {2, Normal, VddOn},
                                        {3, Normal, VddOff},
                                        {4, Flash, Reset},
                                        {5, Flash, Normal},
                                        {6, Normal, Reset},
                                        {7, VddOff, Request},
                                        {7, VddOn, Request},
                                        {8, VddOn, WakeUp},
                                        {8, WakeUp, Request},
                                        {9, Request, Normal}}};

const QColor ground(0x2C, 0x37, 0x45);
const QColor quiet(0x62, 0x75, 0x8C);
const QColor possible(Qt::white);

/// The point at which the line between the centres of two boxes leaves the first.
QPointF edgeOf(const QRectF& box, QPointF towards) {
    const QPointF way = towards - box.center();
    const qreal horizontal = way.x() == 0 ? 1e9 : (box.width() / 2 + 4) / std::abs(way.x());
    const qreal vertical = way.y() == 0 ? 1e9 : (box.height() / 2 + 4) / std::abs(way.y());
    return box.center() + way * std::min({horizontal, vertical, qreal(1)});
}

void paintArrow(QPainter& painter, QPointF from, QPointF to) {
    constexpr qreal head = 9;
    const QPointF way = to - from;
    const qreal length = std::hypot(way.x(), way.y());
    if (length < head)
        return;
    const QPointF unit = way / length;
    const QPointF across(-unit.y(), unit.x());
    painter.drawLine(from, to - unit * head);
    const std::array<QPointF, 3> tip{to, to - unit * head + across * (head / 2),
                                     to - unit * head - across * (head / 2)};
    painter.drawConvexPolygon(tip.data(), static_cast<int>(tip.size()));
}

void paintTransition(QPainter& painter, const std::vector<QWidget*>& modes, int line,
                     const QColor& color) {
    painter.setPen(QPen(color, color == possible ? 2.5 : 1.5));
    painter.setBrush(color);
    for (const Arrow& arrow : arrows) {
        if (arrow.line != line)
            continue;
        const QRectF from = modes.at(static_cast<std::size_t>(arrow.from))->geometry();
        const QRectF to = modes.at(static_cast<std::size_t>(arrow.to))->geometry();
        paintArrow(painter, edgeOf(from, to.center()), edgeOf(to, from.center()));
    }
}

} // namespace

/// A transition that is possible now: drawn over the others.
class ModePicture::Transition : public QLabel {
public:
    Transition(int line, const std::vector<QWidget*>& modes, QWidget* parent)
        : QLabel(parent), modes_(modes), line_(line) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        paintTransition(painter, modes_, line_, possible);
    }

private:
    const std::vector<QWidget*>& modes_;
    int line_;
};

ModePicture::ModePicture(const PanelWidgets& widgets, QWidget* parent) : QWidget(parent) {
    for (int line = 0; line < zt72518::modeLines; ++line) {
        auto* transition = new Transition(line, modes_, this);
        widgets.binder.bind(widgets.controls.get<forms::Label>({"lin_pre", line}), *transition);
        transitions_.push_back(transition);
    }
    for (int i = 0; i < requestPlace; ++i)
        modes_.push_back(widgets.button({"Send_pre_prog", i}, this));
    auto* request = widgets.make<QLabel, forms::Label>({"read_pre_prog", 1}, this);
    request->setAlignment(Qt::AlignCenter);
    request->setFrameShape(QFrame::Box);
    request->setAutoFillBackground(true);
    request->setBackgroundRole(QPalette::Window);
    modes_.push_back(request);
    nameTransitions();
}

ModePicture::~ModePicture() = default;

void ModePicture::nameTransitions() {
    const auto mode = [this](int place) {
        return modes_.at(static_cast<std::size_t>(place))->property("text").toString().simplified();
    };
    for (int line = 0; line < zt72518::modeLines; ++line) {
        QStringList ways;
        for (const Arrow& arrow : arrows)
            if (arrow.line == line)
                ways << mode(arrow.from) + " to " + mode(arrow.to);
        transitions_.at(static_cast<std::size_t>(line))
            ->setAccessibleName("possible now: " + ways.join(", "));
    }
}

QSize ModePicture::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 18};
}

void ModePicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), 4, 4);
    for (int line = 0; line < zt72518::modeLines; ++line)
        paintTransition(painter, modes_, line, quiet);
}

void ModePicture::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void ModePicture::place() {
    const QSize size(fontMetrics().averageCharWidth() * 22, fontMetrics().height() * 2 + 8);
    for (std::size_t i = 0; i < modes_.size(); ++i) {
        const bool isMode = i != wakeUpPlace; // the other one is an intermediate state
        QRect box(QPoint(), isMode ? size : QSize(size.width() * 2 / 3, size.height() * 2 / 3));
        box.moveCenter(QPoint(static_cast<int>(modePlaces.at(i).x() * width()),
                              static_cast<int>(modePlaces.at(i).y() * height())));
        modes_[i]->setGeometry(box);
    }
    for (Transition* transition : transitions_)
        transition->setGeometry(rect());
}

ModeDiagram::ModeDiagram(const PanelWidgets& widgets, QWidget* parent)
    : QWidget(parent), widgets_(widgets) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* left = new QVBoxLayout;
    left->addWidget(makeReading());
    left->addWidget(new ModePicture(widgets_, this), 1);
    left->addWidget(widgets_.make<QLabel, forms::Label>({"diagram_hint"}, this));
    layout->addLayout(left, 1);
    auto* sheet = new Sheet(this);
    sheet->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* right = new QVBoxLayout(sheet->widget());
    right->setContentsMargins(0, 0, 0, 0);
    right->setSpacing(8);
    right->addWidget(makeBoxes("To Normal mode", Normal));
    right->addWidget(makeBoxes("To Low Power", VddOn));
    right->addWidget(makeBoxes("Behind Init Mode", Init));
    right->addStretch();
    sheet->setFixedWidth(right->sizeHint().width() +
                         sheet->verticalScrollBar()->sizeHint().width());
    layout->addWidget(sheet);
}

QWidget* ModeDiagram::makeReading() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(widgets_.make<QCheckBox, forms::CheckBox>(
        {"pre_prog_box", zt72518::autoReadingBox}, widget));
    row->addSpacing(20);
    row->addWidget(new QLabel("Present mode:", widget));
    row->addWidget(widgets_.make<QLabel, forms::Label>({"read_pre_prog", 0}, widget), 1);
    return widget;
}

QWidget* ModeDiagram::makeBoxes(const QString& title, int button) {
    auto* group = new QGroupBox(title, this);
    auto* column = new QVBoxLayout(group);
    column->setSpacing(2);
    std::vector<int> boxes; // a box may affect several words
    for (const zt72518::ModeWord& word :
         zt72518::modeButtons.at(static_cast<std::size_t>(button)).words)
        if (word.box >= 0 && std::find(boxes.begin(), boxes.end(), word.box) == boxes.end())
            boxes.push_back(word.box);
    for (const int box : boxes)
        column->addWidget(widgets_.make<QCheckBox, forms::CheckBox>({"pre_prog_box", box}, group));
    return group;
}

} // namespace bitlux::gui
