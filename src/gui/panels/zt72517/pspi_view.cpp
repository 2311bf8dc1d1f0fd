#include "gui/panels/zt72517/pspi_view.h"

#include "gui/desktop/theme.h"
#include "gui/panels/group_flow.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSlider>
#include <QStyleOptionButton>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

/// Highlights the button of the present state, which cannot be pressed.
class StateButton : public QPushButton {
public:
    explicit StateButton(QWidget* parent) : QPushButton(parent) {
        setAutoDefault(false);
        setMinimumHeight(fontMetrics().height() * 2);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

protected:
    void initStyleOption(QStyleOptionButton* option) const override {
        QPushButton::initStyleOption(option);
        if (isEnabled())
            return;
        option->palette.setColor(QPalette::Button, palette().color(QPalette::Highlight));
        option->palette.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
    }
    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::EnabledChange)
            setAccessibleDescription(isEnabled() ? QString() : "the present state");
        QPushButton::changeEvent(event);
    }
};

QLabel* centred(QLabel* label) {
    label->setAlignment(Qt::AlignCenter);
    return label;
}

/// A label with a line around it, whatever its colour.
QLabel* lamp(QLabel* label) {
    label->setFrameShape(QFrame::StyledPanel);
    label->setMargin(3);
    return centred(label);
}

} // namespace

template <typename Widget, typename Control>
Widget* PspiView::add(Control& control, QWidget* parent) {
    auto* widget = binder_.make<Widget>(control, parent);
    if (widget->focusPolicy() != Qt::NoFocus)
        order_.push_back(widget);
    return widget;
}

PspiView::PspiView(zt72517::PspiPage& page, const Session& session, QWidget& before, Binder& binder,
                   QWidget* parent)
    : QWidget(parent), page_(page), binder_(binder), order_{&before} {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    auto* noDongle = new QLabel("No dongle is plugged in: this page works over USB only.", this);
    noDongle->setWordWrap(true);
    column->addWidget(noDongle);
    auto* groups = new GroupFlow;
    for (QWidget* group : {makeStates(), makeLines(), makeConfiguration(), makeByte()})
        groups->addWidget(group);
    column->addLayout(groups);
    column->addWidget(makeFlags());
    binder_.bind(page_.timer_flag, *new QTimer(this));
    for (std::size_t i = 1; i < order_.size(); ++i)
        setTabOrder(order_[i - 1], order_[i]);
    const auto follow = [noDongle, &session] { noDongle->setVisible(!session.USBReady); };
    flushed_ = binder_.flushed.follow(follow);
    follow();
}

QWidget* PspiView::makeStates() {
    auto* box = binder_.make<QGroupBox>(page_.etat, this);
    auto* grid = new QGridLayout(box);
    const auto head = [&](const char* text, int row, int column) {
        grid->addWidget(centred(new QLabel(text, box)), row, column);
    };
    // A state is in the row and column of the levels of its two lines.
    head("EN 0", 0, 1);
    head("EN 1", 0, 2);
    head("NSTB 0", 1, 0);
    head("NSTB 1", 2, 0);
    grid->addWidget(add<StateButton>(page_.mode(0), box), 1, 1);
    grid->addWidget(add<StateButton>(page_.mode(3), box), 1, 2);
    grid->addWidget(add<StateButton>(page_.mode(1), box), 2, 1);
    grid->addWidget(add<StateButton>(page_.mode(2), box), 2, 2);
    return box;
}

QWidget* PspiView::makeOptions(forms::Frame& frame,
                               const forms::ControlArray<forms::OptionButton>& all,
                               QWidget* parent) {
    auto* box = binder_.make<QGroupBox>(frame, parent);
    auto* row = new QHBoxLayout(box);
    for (const auto& option : all)
        row->addWidget(add<QRadioButton>(*option, box));
    row->addStretch();
    return box;
}

QWidget* PspiView::makeLines() {
    auto* box = new QGroupBox("Lines by hand", this);
    auto* grid = new QGridLayout(box);
    grid->addWidget(makeOptions(page_.frame_nstb, page_.opt_nstb, box), 0, 0);
    grid->addWidget(makeOptions(page_.frame_en, page_.opt_en, box), 0, 1);
    auto* apply = add<QPushButton>(page_.opt_valid, box);
    apply->setAccessibleName(apply->text() + ", set the lines");
    grid->addWidget(apply, 1, 0, 1, 2);
    grid->setRowStretch(2, 1);
    return box;
}

QWidget* PspiView::makeConfiguration() {
    auto* box = new QGroupBox("Configuration", this);
    auto* column = new QVBoxLayout(box);
    auto* row = new QHBoxLayout;
    for (forms::CheckBox* any : {&page_.can_wu_opt, &page_.crank_opt, &page_.nerr_opt})
        row->addWidget(add<QCheckBox>(*any, box));
    row->addStretch();
    column->addLayout(row);
    column->addWidget(makeOptions(page_.frame_sr, page_.sr_opt, box));
    column->addStretch();
    return box;
}

QWidget* PspiView::makeByte() {
    auto* box = new QGroupBox("Byte", this);
    auto* column = new QVBoxLayout(box);
    auto* row = new QHBoxLayout;
    auto* label = add<QLabel>(page_.TextHexPSPI, box);
    row->addWidget(label);
    auto* entry = add<QLineEdit>(page_.byte_to_send, box);
    entry->setFont(fixedFont());
    entry->setMaximumWidth(entry->fontMetrics().averageCharWidth() * 6);
    label->setBuddy(entry);
    row->addWidget(entry);
    row->addWidget(add<QPushButton>(page_.send_pspi, box));
    row->addStretch();
    column->addLayout(row);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(1);
    grid->addWidget(add<QLabel>(page_.label_bit_read, box), 1, 0);
    for (int bit = page_.bit_read.last(); bit >= 0; --bit) {
        const int place = page_.bit_read.last() - bit + 1;
        auto* number = centred(new QLabel(QString::number(bit), box));
        number->setFont(scaled(number->font(), 0.8));
        grid->addWidget(number, 0, place);
        auto* digit = lamp(add<QLabel>(page_.bit_read(bit), box));
        digit->setFont(fixedFont());
        digit->setAccessibleDescription(QString("bit %1").arg(bit));
        grid->addWidget(digit, 1, place);
    }
    grid->setColumnStretch(grid->columnCount(), 1);
    column->addLayout(grid);
    column->addStretch();
    return box;
}

QWidget* PspiView::makeFlags() {
    auto* box = new QGroupBox("Flags", this);
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);
    for (int number = 1; zt72517::FlagLine & line : page_.flagLines)
        addFlagLine(number++, line, *grid, box);
    auto* failure = lamp(add<QLabel>(page_.can_fail_text, box));
    const int row = grid->rowCount();
    grid->addWidget(new QLabel("CAN bus", box), row, 0);
    grid->addWidget(failure, row, 1, 1, 3);
    grid->addWidget(new QLabel("Read all", box), row + 1, 0);
    grid->addLayout(makeRefresh(box), row + 1, 1, 1, grid->columnCount() - 1);
    return box;
}

void PspiView::addFlagLine(int number, zt72517::FlagLine& line, QGridLayout& grid,
                           QWidget* parent) {
    grid.addWidget(new QLabel(QString("Line %1").arg(number), parent), number, 0);
    for (const auto& flag : line.flags) {
        const int column = flag->index().value() + 1;
        grid.addWidget(lamp(add<QLabel>(*flag, parent)), number, column);
        grid.setColumnStretch(column, 1); // all have the same width
    }
    constexpr int behindFlags = 7;
    auto* read = add<QPushButton>(line.read, parent);
    read->setAccessibleName(QString("%1, read line %2").arg(read->text()).arg(number));
    grid.addWidget(read, number, behindFlags);
}

QLayout* PspiView::makeRefresh(QWidget* parent) {
    auto* row = new QHBoxLayout;
    for (const auto& option : page_.auto_opt) {
        auto* made = add<QRadioButton>(*option, parent);
        made->setAccessibleName(made->text() + ", read all lines again and again");
        row->addWidget(made);
    }
    auto* bar = new QSlider(Qt::Horizontal, parent);
    binder_.bind(page_.HScroll1, *bar);
    bar->setSingleStep(100);
    bar->setPageStep(100);
    bar->setAccessibleName("Milliseconds between two refreshes");
    order_.push_back(bar);
    row->addWidget(bar, 1);
    auto* interval = add<QLabel>(page_.refresh_aff, parent);
    interval->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    interval->setMinimumWidth(interval->fontMetrics().horizontalAdvance("2000"));
    row->addWidget(interval);
    row->addWidget(add<QLabel>(page_.Label2(0), parent));
    return row;
}

} // namespace bitlux::gui
