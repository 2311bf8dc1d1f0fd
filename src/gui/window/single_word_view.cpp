#include "gui/window/single_word_view.h"

#include "gui/desktop/theme.h"
#include "gui/window/log_pins_view.h"
#include "gui/window/quick_command_row.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int bitsInGroup = 8;
constexpr int groupCount = SingleWordPage::bitColumns / bitsInGroup;

} // namespace

SingleWordView::SingleWordView(Program& program, Binder& binder, QWidget& before, QWidget* parent)
    : QWidget(parent),
      form_(program.mainForm()),
      binder_(binder),
      before_(before),
      groups_(groupCount) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    // The first child, so that a screen reader reads the entries first, whenever they are made.
    auto* entries = new QWidget(this);
    entries_ = new QVBoxLayout(entries);
    entries_->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(entries);
    layout->addWidget(makeCommandRow(program));
    runPlace_.room = new QWidget(this);
    layout->addWidget(runPlace_.room);
    layout->addWidget(new LogPinsView(program, binder_, LogPinsView::Page::SingleWord, this), 1);
    subscriptions_ = {program.engine().wordStarting.follow([this] { noteWord(); }),
                      program.engine().wordTransferred.follow([this] { answered_ = true; }),
                      binder_.flushed.follow([this] { follow(); })};
    follow();
}

QWidget* SingleWordView::makeBitRows() {
    SingleWordPage& page = form_.singleWord;
    bits_ = new QWidget(entries_->parentWidget());
    auto* rows = new QVBoxLayout(bits_);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* in = binder_.make<QGroupBox>(page.frameSPIinSingle, bits_);
    rows->addWidget(makeBitRow(in, binder_.make<QLabel>(page.lblSItitle, in), true));
    auto* out = binder_.make<QGroupBox>(page.frameSPIoutSingle, bits_);
    rows->addWidget(makeBitRow(out, binder_.make<QLabel>(page.lblSOtitle, out), false));
    return bits_;
}

QWidget* SingleWordView::makeBitRow(QGroupBox* frame, QLabel* title, bool toSend) {
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(10, 6, 10, 8);
    row->setSpacing(12);
    // Both titles have the same width, so that the bits are aligned.
    title->setMinimumWidth(title->fontMetrics().horizontalAdvance("Word Received (DO)") + 4);
    title->setContentsMargins(0, 0, 0, toSend ? 4 : 2); // on one line with the bits
    row->addWidget(title, 0, Qt::AlignBottom);
    row->addStretch();
    bitRows_[toSend ? 0 : 1] = row;
    return frame;
}

void SingleWordView::makeMissingGroups() {
    constexpr int place = 1; // after the title; higher bits are to the left
    bool made = false;
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        if (!isShown(group) || groups_[group][0] != nullptr)
            continue;
        made = true;
        for (const std::size_t row : {0U, 1U})
            bitRows_[row]->insertWidget(place, makeGroup(static_cast<int>(group), row == 0), 0,
                                        Qt::AlignBottom);
    }
    if (made)
        orderTabs();
}

void SingleWordView::orderTabs() {
    QWidget* before = &before_;
    const auto goThrough = [&before](QWidget* widget) {
        if (widget != nullptr) {
            QWidget::setTabOrder(before, widget);
            before = widget;
        }
    };
    for (std::size_t bit = bitButtons_.size(); bit-- > 0;)
        goThrough(bitButtons_[bit]);
    goThrough(hexEntry_);
}

bool SingleWordView::isShown(std::size_t group) const {
    return form_.singleWord.cmdSI_single(static_cast<int>(group) * bitsInGroup).visible();
}

QWidget* SingleWordView::makeGroup(int group, bool toSend) {
    SingleWordPage& page = form_.singleWord;
    auto* widget = new QWidget(this);
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2);
    grid->setVerticalSpacing(1);
    const int width = fontMetrics().horizontalAdvance("00") + 9;
    for (int n = 0; n < bitsInGroup; ++n) {
        const int bit = group * bitsInGroup + bitsInGroup - 1 - n;
        auto* number = binder_.make<QLabel>(
            toSend ? page.lblInBitsSingle(bit) : page.lblOutBitsSingle(bit), widget);
        number->setAlignment(Qt::AlignCenter);
        grid->addWidget(number, 0, n);
        if (toSend) {
            auto* button = binder_.make<QPushButton>(page.cmdSI_single(bit), widget);
            bitButtons_[static_cast<std::size_t>(bit)] = button;
            button->setFixedWidth(width);
            button->setAccessibleName(QString("Bit %1").arg(bit));
            button->setAccessibleDescription("Bit to send");
            grid->addWidget(button, 1, n);
        } else {
            auto* label = binder_.make<DigitsLabel>(page.lblSO_single(bit), widget);
            label->setAlignment(Qt::AlignCenter);
            label->setFixedWidth(width);
            answers_.push_back(label);
            grid->addWidget(label, 1, n);
        }
    }
    groups_[static_cast<std::size_t>(group)][toSend ? 0 : 1] = widget;
    return widget;
}

QWidget* SingleWordView::makeHexRows() {
    SingleWordPage& page = form_.singleWord;
    hexRows_ = new QWidget(entries_->parentWidget());
    auto* grid = new QGridLayout(hexRows_);
    grid->setContentsMargins(0, 4, 0, 4);
    grid->setHorizontalSpacing(12);
    const QFont large = scaled(fixedFont(), 1.35);
    auto* entryTitle = binder_.make<QLabel>(page.lblHexDI, hexRows_);
    auto* entry = new WordEntry(page.txtHexWordToSend, binder_, hexRows_);
    entry->setFont(large);
    entryTitle->setBuddy(entry);
    hexEntry_ = entry;
    auto* answer = binder_.make<DigitsLabel>(page.lblHexWordReceived, hexRows_);
    answer->setFont(large);
    answers_.push_back(answer);
    grid->addWidget(entryTitle, 0, 0);
    grid->addWidget(entry, 0, 1);
    grid->addWidget(binder_.make<QLabel>(page.lblHexDO, hexRows_), 1, 0);
    grid->addWidget(answer, 1, 1);
    grid->setColumnStretch(1, 1);
    return hexRows_;
}

QWidget* SingleWordView::makeCommandRow(Program& program) {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QuickCommandRow(program, binder_, widget), 1);
    row->addSpacing(24);
    row->addWidget(binder_.make<QPushButton>(form_.singleWord.cmdAll0Single, widget));
    auto* last = binder_.make<QPushButton>(form_.singleWord.cmdAll1Single, widget);
    row->addWidget(last);
    runPlace_.before = last;
    return widget;
}

/// Panels and extra pins send words too; the words of a run belong to this page while it is shown.
void SingleWordView::noteWord() {
    if (hexEntry_ != nullptr && form_.singleWord.txtHexWordToSend.visible() &&
        form_.run.state() != RunControls::State::Idle && isVisible())
        hexEntry_->sending();
}

void SingleWordView::enterNextWord() {
    if (hexEntry_ == nullptr || !hexEntry_->isVisible())
        return;
    hexEntry_->setFocus();
    hexEntry_->selectAll();
}

void SingleWordView::follow() {
    const SingleWordPage& page = form_.singleWord;
    const bool asBits = page.frameSPIinSingle.visible();
    const bool asHex = page.txtHexWordToSend.visible();
    // Either display, and each group of bits, is made when it is first shown.
    if (asBits && bits_ == nullptr)
        entries_->insertWidget(0, makeBitRows());
    if (asHex && hexRows_ == nullptr) {
        entries_->addWidget(makeHexRows());
        orderTabs();
    }
    if (bits_ != nullptr) {
        if (asBits)
            makeMissingGroups();
        for (std::size_t group = 0; group < groups_.size(); ++group)
            for (QWidget* widget : groups_[group])
                if (widget != nullptr)
                    widget->setVisible(isShown(group));
        bits_->setVisible(asBits);
    }
    if (hexRows_ != nullptr)
        hexRows_->setVisible(asHex);
    if (answered_)
        for (DigitsLabel* answer : answers_)
            answer->markChanges();
    answered_ = false;
}

} // namespace bitlux::gui
