#include "gui/main_view.h"

#include "gui/log_pins_view.h"
#include "gui/theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace bitlux::gui {

namespace {

constexpr int bitsInGroup = 8;
constexpr int groupCount = SingleWordPage::bitColumns / bitsInGroup;

QFont scaled(const QFont& font, qreal factor) {
    QFont result = font;
    result.setPointSizeF(font.pointSizeF() * factor);
    return result;
}

} // namespace

template <typename Widget, typename Control>
Widget* MainView::bound(Control& control, QWidget* parent) {
    auto* widget = new Widget(parent != nullptr ? parent : this);
    binder_.bind(control, *widget);
    return widget;
}

MainView::MainView(Program& program, Binder& binder, QWidget* parent)
    : QWidget(parent),
      program_(program),
      form_(program.mainForm()),
      binder_(binder),
      groups_(groupCount) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 10, 14, 12);
    layout->setSpacing(10);
    layout->addWidget(makeHeader());
    entries_ = new QVBoxLayout;
    layout->addLayout(entries_);
    layout->addWidget(makeRunRow());
    layout->addWidget(new LogPinsView(form_, binder_, LogPinsView::Page::SingleWord, this), 1);
    leaveOutWaitingControls();
    subscriptions_ = {program_.engine().wordTransferred.follow([this] { answered_ = true; }),
                      binder_.flushed.follow([this] { follow(); })};
    follow();
}

QWidget* MainView::makeHeader() {
    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = bound<QLabel>(form_.labelMainTitle, header);
    title->setFont(scaled(title->font(), 1.35));
    row->addWidget(title);
    row->addWidget(bound<QLabel>(form_.lblConfigNag, header));
    row->addStretch();
    return header;
}

QWidget* MainView::makeBitRows() {
    SingleWordPage& page = form_.singleWord;
    bits_ = new QWidget(this);
    auto* rows = new QVBoxLayout(bits_);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* in = bound<QGroupBox>(page.frameSPIinSingle, bits_);
    rows->addWidget(makeBitRow(in, bound<QLabel>(page.lblSItitle, in), true));
    auto* out = bound<QGroupBox>(page.frameSPIoutSingle, bits_);
    rows->addWidget(makeBitRow(out, bound<QLabel>(page.lblSOtitle, out), false));
    return bits_;
}

QWidget* MainView::makeBitRow(QGroupBox* frame, QLabel* title, bool toSend) {
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(10, 6, 10, 8);
    row->setSpacing(12);
    // Both titles take the same room, so that the bits stand below each other.
    title->setMinimumWidth(title->fontMetrics().horizontalAdvance("Word Received (DO)") + 4);
    title->setContentsMargins(0, 0, 0, toSend ? 4 : 2); // on one line with the bits
    row->addWidget(title, 0, Qt::AlignBottom);
    row->addStretch();
    bitRows_[toSend ? 0 : 1] = row;
    return frame;
}

void MainView::makeMissingGroups() {
    constexpr int place = 1; // behind the title; higher bits stand to the left
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

void MainView::orderTabs() {
    QWidget* before = this;
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

bool MainView::isShown(std::size_t group) const {
    return form_.singleWord.cmdSI_single(static_cast<int>(group) * bitsInGroup).visible();
}

QWidget* MainView::makeGroup(int group, bool toSend) {
    SingleWordPage& page = form_.singleWord;
    auto* widget = new QWidget(this);
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2);
    grid->setVerticalSpacing(1);
    const int width = fontMetrics().horizontalAdvance("00") + 9;
    for (int n = 0; n < bitsInGroup; ++n) {
        const int bit = group * bitsInGroup + bitsInGroup - 1 - n;
        auto* number =
            bound<QLabel>(toSend ? page.lblInBitsSingle(bit) : page.lblOutBitsSingle(bit), widget);
        number->setAlignment(Qt::AlignCenter);
        grid->addWidget(number, 0, n);
        if (toSend) {
            auto* button = bound<QPushButton>(page.cmdSI_single(bit), widget);
            bitButtons_[static_cast<std::size_t>(bit)] = button;
            button->setFixedWidth(width);
            button->setAccessibleName(QString("Bit %1").arg(bit));
            button->setAccessibleDescription("Bit to send");
            grid->addWidget(button, 1, n);
        } else {
            auto* label = bound<DigitsLabel>(page.lblSO_single(bit), widget);
            label->setAlignment(Qt::AlignCenter);
            label->setFixedWidth(width);
            answers_.push_back(label);
            grid->addWidget(label, 1, n);
        }
    }
    groups_[static_cast<std::size_t>(group)][toSend ? 0 : 1] = widget;
    return widget;
}

QWidget* MainView::makeHexRows() {
    SingleWordPage& page = form_.singleWord;
    hexRows_ = new QWidget(this);
    auto* grid = new QGridLayout(hexRows_);
    grid->setContentsMargins(0, 4, 0, 4);
    grid->setHorizontalSpacing(12);
    const QFont large = scaled(fixedFont(), 1.35);
    auto* entryTitle = bound<QLabel>(page.lblHexDI, hexRows_);
    auto* entry = bound<QLineEdit>(page.txtHexWordToSend, hexRows_);
    entry->setFont(large);
    entry->setPlaceholderText("hexadecimal, Enter sends");
    entry->setMaxLength(1 << 20);
    entryTitle->setBuddy(entry);
    hexEntry_ = entry;
    auto* answer = bound<DigitsLabel>(page.lblHexWordReceived, hexRows_);
    answer->setFont(large);
    answers_.push_back(answer);
    grid->addWidget(entryTitle, 0, 0);
    grid->addWidget(entry, 0, 1);
    grid->addWidget(bound<QLabel>(page.lblHexDO, hexRows_), 1, 0);
    grid->addWidget(answer, 1, 1);
    grid->setColumnStretch(1, 1);
    return hexRows_;
}

QWidget* MainView::makeRunRow() {
    RunControls& run = form_.run;
    auto* widget = new QWidget(this);
    auto* grid = new QGridLayout(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    // The two of a pair share a place, so that nothing moves when one takes over.
    const std::array<std::pair<forms::Button*, int>, 4> buttons{{{&run.cmdSendOnce, 0},
                                                                 {&run.cmdCancelSingle, 0},
                                                                 {&run.cmdSendContinuous, 1},
                                                                 {&run.cmdStopContinuous, 1}}};
    for (const auto& [control, column] : buttons) {
        auto* button = bound<QPushButton>(*control, widget);
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance("Send Continuously") + 36);
        button->setMinimumHeight(button->fontMetrics().height() + 14);
        grid->addWidget(button, 0, column);
    }
    grid->setColumnStretch(2, 1);
    grid->addWidget(bound<QPushButton>(form_.singleWord.cmdAll0Single, widget), 0, 3);
    grid->addWidget(bound<QPushButton>(form_.singleWord.cmdAll1Single, widget), 0, 4);
    return widget;
}

void MainView::leaveOutWaitingControls() {
    for (const forms::Control* relic :
         {static_cast<forms::Control*>(&form_.Command1), static_cast<forms::Control*>(&form_.Text1),
          static_cast<forms::Control*>(&form_.Text2)})
        binder_.leaveOut(*relic);
    // They exist before their pages do.
    for (const forms::Control* control :
         {static_cast<forms::Control*>(&form_.tabs.TabStripMain),
          static_cast<forms::Control*>(&form_.commands.cmbMasterQCList),
          static_cast<forms::Control*>(&form_.commands.lstCommandsAvailable),
          static_cast<forms::Control*>(&form_.commands.lstCommandsToSend),
          static_cast<forms::Control*>(&form_.quickCommands.cmdSaveQC),
          static_cast<forms::Control*>(&form_.quickCommands.cmdDeleteQC),
          static_cast<forms::Control*>(&form_.editor.cmdAddMult),
          static_cast<forms::Control*>(&form_.editor.cmdAddPause),
          static_cast<forms::Control*>(&form_.editor.cmdAddWait),
          static_cast<forms::Control*>(&form_.editor.cmdRemoveMult),
          static_cast<forms::Control*>(&form_.editor.cmdMoveUpMult),
          static_cast<forms::Control*>(&form_.editor.cmdMoveDownMult),
          static_cast<forms::Control*>(&form_.editor.cmdClearMultiple),
          static_cast<forms::Control*>(&form_.batches.cmdSaveBatch),
          static_cast<forms::Control*>(&form_.batches.cmdDeleteBatch),
          static_cast<forms::Control*>(&form_.batches.cmbBatches),
          static_cast<forms::Control*>(&form_.log.lstSessionLogMult),
          static_cast<forms::Control*>(&form_.log.cmdSaveLogMult),
          static_cast<forms::Control*>(&form_.log.cmdClearLogMult),
          static_cast<forms::Control*>(&form_.extraPins.TabStripLogPins)})
        binder_.leaveOut(*control);
    for (const forms::Form* dialog : {static_cast<forms::Form*>(&program_.saveBatchForm()),
                                      static_cast<forms::Form*>(&program_.addWaitForm())})
        for (const forms::Control* control : dialog->controls())
            binder_.leaveOut(*control);
    for (const auto& page : form_.tabs.FrameMain)
        binder_.leaveOut(*page);
    for (const auto& page : form_.log.frameLogPins)
        binder_.leaveOut(*page);
    for (int row = 0; row < ExtraPinRows::rowCount; ++row)
        for (const forms::Control* control :
             {static_cast<forms::Control*>(&form_.extraPins.lblPinName(row)),
              static_cast<forms::Control*>(&form_.extraPins.cmdToggleHigh(row)),
              static_cast<forms::Control*>(&form_.extraPins.cmdToggleLow(row))})
            binder_.leaveOut(*control);
}

void MainView::follow() {
    const SingleWordPage& page = form_.singleWord;
    const bool asBits = page.frameSPIinSingle.visible();
    const bool asHex = page.txtHexWordToSend.visible();
    // Either display, and each group of bits, is made when it is shown for the first time.
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

void MainView::focusEntry() {
    if (form_.singleWord.txtHexWordToSend.visible())
        form_.singleWord.txtHexWordToSend.setFocus();
    else
        form_.run.cmdSendOnce.setFocus();
}

} // namespace bitlux::gui
