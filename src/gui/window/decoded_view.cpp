#include "gui/window/decoded_view.h"

#include "gui/desktop/theme.h"
#include "gui/window/copy_menu.h"

#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>

namespace bitlux::gui {

namespace {

using Column = DecodedLog::Column;

constexpr int digitsInSight = 16; ///< longer words are elided

} // namespace

DecodedView::DecodedView(Program& program, Binder& binder, QWidget* parent)
    : QTableView(parent),
      program_(program),
      binder_(binder),
      model_(program.decoded(), this),
      names_(new NamesBox(program.decoded().names(), parent)),
      export_(new QPushButton("E&xport CSV...", parent)) {
    setObjectName("decodedLog");
    setAccessibleName("Decoded log");
    setModel(&model_);
    prepare();
    names_->setObjectName("decodedChip");
    export_->setObjectName("exportCsv");
    export_->setToolTip("Saves the table as comma-separated values");
    connect(export_, &QPushButton::clicked, this, [this] { program_.decoded().saveCsvAs(); });
    addCopyMenu(
        *this, program.copies(), [this] { return program_.copies().ofRows(selectedWords()); },
        [this] { copyRows(); });
    timer_.setSingleShot(true);
    timer_.setInterval(refreshPause);
    connect(&timer_, &QTimer::timeout, this, [this] { refresh(); });
}

void DecodedView::prepare() {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultSectionSize(fontMetrics().averageCharWidth() * 6);
    changeEvent(nullptr);
}

void DecodedView::addTools(QBoxLayout& row) {
    row.addWidget(names_);
    row.addStretch();
    row.addWidget(export_);
}

void DecodedView::setFollowing(bool isShown) {
    if (!isShown) {
        subscriptions_ = {};
        return;
    }
    const auto soon = [this] {
        if (!timer_.isActive())
            timer_.start();
    };
    subscriptions_ = {program_.engine().wordTransferred.follow(soon),
                      program_.decoded().names().changed.follow([this] { refresh(); }),
                      binder_.flushed.follow(soon)}; // the log was cleared, a tab was opened
    refresh();
    scrollToBottom();
}

void DecodedView::refresh() {
    QScrollBar& bar = *verticalScrollBar();
    const bool isAtEnd = bar.value() == bar.maximum();
    const int before = bar.value();
    const int dropped = model_.follow();
    names_->follow();
    export_->setEnabled(model_.rowCount() > 0);
    measure();
    if (isAtEnd)
        scrollToBottom();
    else if (dropped > 0)
        bar.setValue(before - dropped);
}

/// Columns become as wide as the last row needs, and never narrower: they would be restless.
void DecodedView::measure() {
    const int last = model_.rowCount() - 1;
    const QFontMetrics digits(fixedFont());
    const int padding = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 3);
    for (const Column column : {Column::Time, Column::Bus, Column::Word, Column::Answer}) {
        const int section = static_cast<int>(column);
        int wanted = horizontalHeader()->sectionSizeHint(section);
        if (last >= 0) {
            const QString text = model_.index(last, section).data().toString();
            const QFontMetrics& font = column == Column::Bus ? fontMetrics() : digits;
            wanted = std::max(wanted, font.horizontalAdvance(text.left(digitsInSight)) + padding);
        }
        if (wanted > columnWidth(section))
            setColumnWidth(section, wanted);
    }
    shareRoom();
}

/// What both mean has the room that is left; where that is little, one scrolls.
void DecodedView::shareRoom() {
    constexpr int least = 26; // letters
    int room = viewport()->width();
    for (int section = 0; section < static_cast<int>(Column::Meaning); ++section)
        room -= columnWidth(section);
    const int each = std::max(room / 2, least * fontMetrics().averageCharWidth());
    for (const Column column : {Column::Meaning, Column::AnswerMeaning})
        setColumnWidth(static_cast<int>(column), each);
}

void DecodedView::resizeEvent(QResizeEvent* event) {
    QScrollBar& bar = *verticalScrollBar();
    const bool isAtEnd = bar.value() == bar.maximum();
    QTableView::resizeEvent(event);
    shareRoom();
    if (isAtEnd)
        scrollToBottom();
}

std::vector<std::size_t> DecodedView::selectedWords() const {
    std::vector<std::size_t> words;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        words.push_back(model_.wordAt(index.row()));
    std::sort(words.begin(), words.end());
    const std::size_t first = program_.decoded().log().first();
    std::erase_if(words, [first](std::size_t word) { return word < first; });
    return words;
}

void DecodedView::copyRows() const {
    const DecodedLog& log = program_.decoded().log();
    std::string text;
    for (const std::size_t word : selectedWords())
        for (int column = 0; column < DecodedLog::columns; ++column) {
            text += log.text(word, static_cast<Column>(column));
            text += column + 1 == DecodedLog::columns ? '\n' : '\t';
        }
    if (!text.empty())
        QApplication::clipboard()->setText(QString::fromStdString(text));
}

void DecodedView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copyRows();
    else
        QTableView::keyPressEvent(event);
}

void DecodedView::changeEvent(QEvent* event) {
    if (event != nullptr)
        QTableView::changeEvent(event);
    if (event == nullptr || event->type() == QEvent::FontChange) {
        const int height = std::max(fontMetrics().height(), QFontMetrics(fixedFont()).height()) + 3;
        verticalHeader()->setMinimumSectionSize(height);
        verticalHeader()->setDefaultSectionSize(height);
    }
}

void DecodedView::paintEvent(QPaintEvent* event) {
    ++paints_;
    QTableView::paintEvent(event);
    if (model_.rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, "Send a word to see what it means");
}

} // namespace bitlux::gui
