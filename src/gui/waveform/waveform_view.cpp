#include "gui/waveform/waveform_view.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QScreen>

namespace bitlux::gui {

namespace {

constexpr double buttonFactor = 1.5;
constexpr int leastLines = 16; ///< the minimum height of a page, in lines of text

QDockWidget* otherDockBelow(QMainWindow& window, const QDockWidget& view) {
    QDockWidget* other = nullptr;
    for (auto* dock : window.findChildren<QDockWidget*>())
        if (dock != &view && window.dockWidgetArea(dock) == Qt::BottomDockWidgetArea)
            other = dock;
    return other;
}

bool isTooLow(int pageHeight, const QMainWindow& window) {
    return pageHeight < leastLines * window.fontMetrics().height();
}

/// Places the view above the other docks, and enlarges the window for it. If too little of the page
/// would remain, the view becomes a tab beside the other docks.
void placeDock(QDockWidget& view, QMainWindow& window) {
    QDockWidget* other = otherDockBelow(window, view);
    window.addDockWidget(Qt::BottomDockWidgetArea, &view, Qt::Vertical);
    const int room =
        window.screen()->availableGeometry().bottom() - window.frameGeometry().bottom();
    const int wanted = view.sizeHint().height();
    const int more = window.isMaximized() ? 0 : std::clamp(room, 0, wanted);
    const int left = window.centralWidget()->height() + more - wanted;
    if (other != nullptr && isTooLow(left, window))
        window.tabifyDockWidget(other, &view);
    else if (other != nullptr)
        window.splitDockWidget(&view, other, Qt::Vertical);
    if (more > 0)
        window.resize(window.width(), window.height() + more);
}

} // namespace

WaveformView::WaveformView(Program& program, QWidget* parent)
    : QDockWidget("Waveform", parent), program_(program), recording_(program.waveform()) {
    setObjectName("waveform");
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(14, 4, 14, 8);
    layout->setSpacing(6);
    auto* row = new QHBoxLayout;
    canvas_ = new WaveCanvas(content);
    readout_ = new QLabel(content);
    readout_->setObjectName("waveform.readout");
    readout_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    difference_ = new QLabel(content);
    difference_->setObjectName("waveform.difference");
    for (QLabel* label : {readout_, difference_})
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    addWordButtons(*row);
    addZoomButtons(*row);
    addSaveButtons(*row);
    layout->addLayout(row);
    layout->addWidget(canvas_, 1);
    auto* below = new QHBoxLayout;
    below->addWidget(readout_, 1);
    below->addWidget(difference_);
    below->addSpacing(6);
    addEdgeButtons(*below);
    layout->addLayout(below);
    setWidget(content);
    canvas_->cursorMoved.subscribe([this] { showReadout(); });
    canvas_->lineChosen.subscribe([this] { followLines(); });
    canvas_->wordWanted.subscribe([this](int words) { step(words); });
    parent->installEventFilter(this);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { refresh(); });
    sinceRefresh_.start();
    refresh();
}

QPushButton* WaveformView::addButton(QBoxLayout& row, const QString& text, const QString& name,
                                     const QString& tip) {
    auto* button = new QPushButton(text, this);
    button->setObjectName("waveform." + name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    if (text.size() == 1) { // a symbol, which means nothing to a screen reader
        button->setAccessibleName(tip);
        button->setFixedWidth(button->sizeHint().height() + 4);
    }
    row.addWidget(button);
    return button;
}

void WaveformView::addWordButtons(QBoxLayout& row) {
    previous_ = addButton(row, "◀", "previous", "Previous word");
    next_ = addButton(row, "▶", "next", "Next word");
    hold_ = addButton(row, "Hold", "hold", "Keep this word while others pass");
    hold_->setCheckable(true);
    connect(previous_, &QPushButton::clicked, this, [this] { step(-1); });
    connect(next_, &QPushButton::clicked, this, [this] { step(1); });
    connect(hold_, &QPushButton::toggled, this, [this] { refresh(); });
    inRow_ = addButton(row, "In a row", "inRow",
                       QString("Show up to %1 words one after the other").arg(rowLength));
    inRow_->setCheckable(true);
    connect(inRow_, &QPushButton::toggled, this, [this] {
        canvas_->fit();
        showWord(canvas_->waveform().number);
        refresh();
    });
    row.addSpacing(6);
    place_ = new QLabel(this);
    place_->setObjectName("waveform.place");
    row.addWidget(place_);
    row.addStretch();
    names_ = new NamesBox(program_.decoded().names(), this);
    names_->setObjectName("waveform.chip");
    row.addWidget(names_);
    row.addSpacing(6);
}

void WaveformView::addZoomButtons(QBoxLayout& row) {
    connect(addButton(row, "−", "zoomOut", "Zoom out"), &QPushButton::clicked, this,
            [this] { canvas_->zoom(1 / buttonFactor); });
    connect(addButton(row, "+", "zoomIn", "Zoom in"), &QPushButton::clicked, this,
            [this] { canvas_->zoom(buttonFactor); });
    connect(addButton(row, "Fit", "fit", "Show everything (Ctrl+0)"), &QPushButton::clicked, this,
            [this] { canvas_->fit(); });
    row.addSpacing(6);
}

void WaveformView::addSaveButtons(QBoxLayout& row) {
    saveVcd_ = addButton(row, "Save VCD...", "saveVcd",
                         "Save the words that are kept as a value change dump");
    saveSr_ =
        addButton(row, "Save .sr...", "saveSr", "Save the words that are kept as a sigrok session");
    connect(saveVcd_, &QPushButton::clicked, this, [this] { recording_.saveVcdAs(); });
    connect(saveSr_, &QPushButton::clicked, this, [this] { recording_.saveSrAs(); });
}

void WaveformView::addEdgeButtons(QBoxLayout& row) {
    lines_ = new QComboBox(this);
    lines_->setObjectName("waveform.lines");
    lines_->setAccessibleName("Line whose edges the cursor goes to");
    lines_->setToolTip("Line whose edges the cursor goes to (Up, Down)");
    lines_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connect(lines_, &QComboBox::activated, this, [this](int item) {
        canvas_->chooseLine(item == 0 ? std::nullopt
                                      : std::optional(static_cast<std::size_t>(item - 1)));
    });
    row.addWidget(lines_);
    connect(addButton(row, "◁", "previousEdge", "Previous edge (Left)"), &QPushButton::clicked,
            this, [this] { canvas_->moveToEdge(false); });
    connect(addButton(row, "▷", "nextEdge", "Next edge (Right)"), &QPushButton::clicked, this,
            [this] { canvas_->moveToEdge(true); });
}

/// The lines of the words that are shown.
void WaveformView::followLines() {
    QStringList wanted{"All edges"};
    for (const WaveLine& line : canvas_->row().lines)
        wanted << QString::fromStdString(line.name);
    QStringList there;
    for (int item = 0; item < lines_->count(); ++item)
        there << lines_->itemText(item);
    if (there != wanted) {
        lines_->clear();
        lines_->addItems(wanted);
    }
    lines_->setCurrentIndex(canvas_->line() ? static_cast<int>(*canvas_->line()) + 1 : 0);
}

void WaveformView::follow() {
    words_ = {program_.engine().wordTransferred.follow([this] { refreshSoon(); }),
              program_.engine().sendFailed.follow([this] { refreshSoon(); }),
              program_.dongle().failed.follow([this] { refreshSoon(); }),
              program_.decoded().names().changed.follow([this] { refresh(); }),
              program_.forms().formShown.follow([this](forms::Form&) { refreshSoon(); })};
}

void WaveformView::refreshSoon() {
    if (!timer_.isActive())
        timer_.start(sinceRefresh_.hasExpired(refreshPause) ? shortPause : refreshPause);
}

void WaveformView::refresh() {
    sinceRefresh_.restart();
    known_ = recording_.count();
    if (!hold_->isChecked() && known_ > 0)
        showWord(known_);
    followNames();
    const std::uint64_t shown = canvas_->waveform().number;
    const bool hasWords = !recording_.words().empty();
    place_->setText(hasWords && shown > 0 ? placeText() : QString());
    previous_->setEnabled(hasWords && shown > recording_.words().front().number);
    next_->setEnabled(hasWords && shown < known_);
    hold_->setEnabled(hasWords);
    saveVcd_->setEnabled(hasWords);
    saveSr_->setEnabled(hasWords);
}

void WaveformView::followNames() {
    names_->follow();
    WaveNames names{.decoder = program_.decoded().names().decoder()};
    const WaveRow& row = canvas_->row();
    if (names.decoder != nullptr && names.decoder->format().answersNext && !row.words.empty())
        if (const WordRecord* before = recording_.word(row.words.front().waveform.number - 1))
            names.before = sentNumber(waveformOf(*before));
    canvas_->setNames(names);
}

QString WaveformView::placeText() const {
    const std::vector<WaveRow::Word>& words = canvas_->row().words;
    const std::uint64_t first = words.front().waveform.number;
    const std::uint64_t last = words.back().waveform.number;
    return first == last ? QString("Word %1 of %2").arg(last).arg(known_)
                         : QString("Words %1 to %2 of %3").arg(first).arg(last).arg(known_);
}

void WaveformView::showWord(std::uint64_t number) {
    if (number == 0)
        return;
    const std::uint64_t before = inRow_->isChecked() ? std::min(number, rowLength) - 1 : 0;
    std::vector<Waveform> words;
    for (std::uint64_t n = number - before; n <= number; ++n)
        if (const WordRecord* word = recording_.word(n))
            words.push_back(waveformOf(*word));
    if (!words.empty())
        canvas_->show(std::move(words));
    followLines();
    showReadout();
}

void WaveformView::showReadout() {
    const QString text = canvas_->readout();
    readout_->setText(text.isEmpty() ? "Click, or press an arrow key, for the cursor" : text);
    difference_->setText(canvas_->difference());
}

void WaveformView::step(int words) {
    if (recording_.words().empty())
        return;
    const auto first = static_cast<std::int64_t>(recording_.words().front().number);
    const auto last = static_cast<std::int64_t>(recording_.count());
    const auto wanted = static_cast<std::int64_t>(canvas_->waveform().number) + words;
    hold_->setChecked(true); // the next word would replace the one that the user looks at
    showWord(static_cast<std::uint64_t>(std::clamp(wanted, first, last)));
    refresh();
}

/// Gives the page its height back when the window becomes lower.
void WaveformView::makeRoom() {
    auto* window = qobject_cast<QMainWindow*>(parentWidget());
    if (window == nullptr || !isVisible() || isFloating() ||
        window->dockWidgetArea(this) != Qt::BottomDockWidgetArea ||
        !window->tabifiedDockWidgets(this).isEmpty())
        return;
    const int spare = height() - minimumSizeHint().height();
    QDockWidget* other = otherDockBelow(*window, *this);
    if (other == nullptr || !other->isVisible() || other->isFloating() ||
        !isTooLow(window->centralWidget()->height() + spare, *window))
        return;
    window->tabifyDockWidget(other, this);
    raise();
}

bool WaveformView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == parentWidget())
        QTimer::singleShot(0, this, [this] { makeRoom(); }); // after the page has its new height
    return QDockWidget::eventFilter(watched, event);
}

void WaveformView::closeEvent(QCloseEvent* event) {
    QDockWidget::closeEvent(event);
    closed.raise();
}

void WaveformView::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    if (event->spontaneous())
        return;
    startedHere_ = !recording_.running();
    recording_.start();
    follow();
    hold_->setChecked(false);
    canvas_->show({});
    followLines();
    showReadout();
    refresh();
}

void WaveformView::hideEvent(QHideEvent* event) {
    QDockWidget::hideEvent(event);
    if (event->spontaneous()) // minimised with its window it continues
        return;
    if (startedHere_)
        recording_.stop();
    words_ = {};
}

void addWaveformEntry(QMenu& menu, QMainWindow& window, Program& program) {
    QAction* open = menu.addAction("&Waveform");
    open->setObjectName("openWaveform");
    open->setCheckable(true);
    open->setShortcut(Qt::Key_F8);
    QObject::connect(open, &QAction::toggled, &window,
                     [&, open, view = static_cast<WaveformView*>(nullptr)](bool on) mutable {
                         const bool isFirst = view == nullptr && on;
                         if (isFirst) {
                             view = new WaveformView(program, &window);
                             view->closed.subscribe([open] { open->setChecked(false); });
                             placeDock(*view, window);
                         }
                         if (view != nullptr)
                             view->setVisible(on);
                         if (isFirst) // else it has the least where the window could not grow
                             window.resizeDocks({view}, {view->sizeHint().height()}, Qt::Vertical);
                         if (on)
                             view->raise(); // it may be a tab
                     });
}

} // namespace bitlux::gui
