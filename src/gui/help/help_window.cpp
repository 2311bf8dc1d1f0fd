#include "gui/help/help_window.h"

#include "gui/desktop/program_icon.h"
#include "gui/desktop/theme.h"

#include <array>

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBrowser>

// Outside of any namespace, as the toolkit requires.
static void initializeHelpPages() {
    Q_INIT_RESOURCE(help);
}

namespace bitlux::gui {

namespace {

struct Page {
    const char* file;
    const char* title;
};

constexpr std::array<Page, 16> helpPages{{{"first-steps", "First steps"},
                                          {"words", "Words, types, polarities"},
                                          {"buses", "Dongle, parallel port, adapters"},
                                          {"commands", "Quick Commands and Batches"},
                                          {"continuous", "Continuous sending and the log"},
                                          {"extra-pins", "Extra pins"},
                                          {"waveform", "Waveform"},
                                          {"panels", "Chip panels"},
                                          {"zt72361", "Panel of the ZT72361"},
                                          {"zt72516", "Panel of the ZT72516"},
                                          {"zt72517", "The ZT72517"},
                                          {"zt72537", "Panel of the ZT72537"},
                                          {"files", "Configuration files"},
                                          {"virtual-bench", "The virtual bench"},
                                          {"keyboard", "Keyboard"},
                                          {"trouble", "When something is wrong"}}};

QUrl urlOf(int page) {
    return QUrl(
        QString("qrc:/help/%1.html").arg(helpPages.at(static_cast<std::size_t>(page)).file));
}

int pageOf(const QUrl& url) {
    const QUrl whole = url.adjusted(QUrl::RemoveFragment);
    for (int page = 0; page < static_cast<int>(helpPages.size()); ++page)
        if (urlOf(page) == whole)
            return page;
    return 0;
}

} // namespace

HelpWindow::HelpWindow() : browser_(new QTextBrowser(this)), contents_(makeContents()) {
    initializeHelpPages();
    setObjectName("help");
    setWindowTitle("Bitlux Forge Help");
    setWindowIcon(programIcon());
    browser_->setFrameShape(QFrame::NoFrame);
    browser_->document()->setDocumentMargin(18);
    connect(browser_, &QTextBrowser::sourceChanged, this, [this](const QUrl& source) {
        const QSignalBlocker blocker(contents_);
        contents_->setCurrentRow(pageOf(source));
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addLayout(makeBar());
    auto* splitter = new QSplitter(this);
    splitter->addWidget(contents_);
    splitter->addWidget(browser_);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(10);
    splitter->setSizes({contents_->minimumWidth(), width()});
    layout->addWidget(splitter, 1);
    setColors();
    show(0);
    contents_->setFocus();
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 38);
}

QListWidget* HelpWindow::makeContents() {
    auto* contents = new QListWidget(this);
    contents->setSpacing(2);
    contents->setAccessibleName("Contents");
    for (const Page& page : helpPages)
        contents->addItem(page.title);
    constexpr int beside = 32;
    contents->setMinimumWidth(contents->sizeHintForColumn(0) + beside);
    connect(contents, &QListWidget::currentRowChanged, this, [this](int row) { show(row); });
    return contents;
}

QHBoxLayout* HelpWindow::makeBar() {
    auto* bar = new QHBoxLayout;
    const auto button = [&](const QString& text, const char* tooltip) {
        auto* made = new QPushButton(text, this);
        made->setAutoDefault(false);
        made->setToolTip(tooltip);
        bar->addWidget(made);
        return made;
    };
    QPushButton* back = button("&Back", "Alt+Left");
    QPushButton* forward = button("&Forward", "Alt+Right");
    bar->addStretch();
    outcome_ = new QLabel(this);
    bar->addWidget(outcome_);
    search_ = new QLineEdit(this);
    search_->setPlaceholderText("Find in the help");
    search_->setAccessibleName("Find");
    search_->setClearButtonEnabled(false);
    search_->setMinimumWidth(fontMetrics().averageCharWidth() * 28);
    bar->addWidget(search_);
    QPushButton* previous = button("&Previous", "Shift+F3");
    QPushButton* next = button("&Next", "F3");
    connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(forward, &QPushButton::clicked, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(previous, &QPushButton::clicked, this, [this] { find(false); });
    connect(next, &QPushButton::clicked, this, [this] { find(true); });
    connect(search_, &QLineEdit::textChanged, outcome_, &QLabel::clear);
    const auto shortcut = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    shortcut(QKeySequence::Find, [this] {
        search_->setFocus();
        search_->selectAll();
    });
    shortcut(QKeySequence::Back, [this] { browser_->backward(); });
    shortcut(QKeySequence::Forward, [this] { browser_->forward(); });
    shortcut(QKeySequence(Qt::Key_F3), [this] { find(true); });
    shortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { find(false); });
    return bar;
}

void HelpWindow::bringToFront() {
    QWidget::show();
    raise();
    activateWindow();
}

void HelpWindow::show(int page) {
    browser_->setSource(urlOf(page));
}

void HelpWindow::setColors() {
    const auto name = [this](QPalette::ColorRole role) { return palette().color(role).name(); };
    browser_->document()->setDefaultStyleSheet(
        QString("p, li, td, th { line-height: 135%; }"
                "p, ul, ol, table { margin-top: 6px; margin-bottom: 8px; }"
                "h1 { font-size: x-large; margin-top: 0; margin-bottom: 10px; }"
                "h2 { font-size: large; margin-top: 16px; margin-bottom: 4px; }"
                "a { color: %1; }"
                "code { font-family: 'DejaVu Sans Mono', monospace; background-color: %2; }"
                "pre { font-family: 'DejaVu Sans Mono', monospace; background-color: %2;"
                "      margin-top: 6px; margin-bottom: 8px; }"
                "th { text-align: left; background-color: %2; }"
                "table { border-collapse: collapse; border: 1px solid %3; }"
                "td, th { padding: 3px 10px 3px 6px; border: 1px solid %3; }")
            .arg(name(QPalette::Highlight), name(QPalette::AlternateBase),
                 name(isDark() ? QPalette::Button : QPalette::Mid)));
}

void HelpWindow::find(bool forwards) {
    outcome_->clear();
    if (search_->text().isEmpty()) {
        search_->setFocus();
        return;
    }
    if (findOnPage(forwards))
        return;
    const QUrl origin = browser_->source();
    const QTextCursor cursor = browser_->textCursor();
    constexpr int count = static_cast<int>(helpPages.size());
    for (int step = 1; step <= count; ++step) { // the last is the other end of this page
        const int page = (pageOf(browser_->source()) + (forwards ? 1 : count - 1)) % count;
        show(page);
        browser_->moveCursor(forwards ? QTextCursor::Start : QTextCursor::End);
        if (findOnPage(forwards))
            return;
    }
    browser_->setSource(origin);
    browser_->setTextCursor(cursor);
    outcome_->setText("Not found");
}

bool HelpWindow::findOnPage(bool forwards) {
    return browser_->find(search_->text(),
                          forwards ? QTextDocument::FindFlags() : QTextDocument::FindBackward);
}

void HelpWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && search_ != nullptr) {
        setColors();
        browser_->reload();
    }
    QWidget::changeEvent(event);
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && search_->hasFocus())
        find((event->modifiers() & Qt::ShiftModifier) == 0);
    else if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

} // namespace bitlux::gui
