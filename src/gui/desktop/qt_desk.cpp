#include "gui/desktop/qt_desk.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>

#include <chrono>

namespace bitlux::gui {

namespace {

QMessageBox::StandardButtons buttonsOf(MessageBox::Buttons buttons) {
    switch (buttons) {
    case MessageBox::Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MessageBox::Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageBox::Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon iconOf(MessageBox::Icon icon) {
    switch (icon) {
    case MessageBox::Icon::Question:
        return QMessageBox::Question;
    case MessageBox::Icon::Exclamation:
        return QMessageBox::Warning;
    case MessageBox::Icon::Information:
        return QMessageBox::Information;
    case MessageBox::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton presetOf(const MessageBox& box) {
    if (!box.preset)
        return QMessageBox::NoButton;
    switch (*box.preset) {
    case MessageBox::Answer::Ok:
        return QMessageBox::Ok;
    case MessageBox::Answer::Cancel:
        return QMessageBox::Cancel;
    case MessageBox::Answer::Yes:
        return QMessageBox::Yes;
    case MessageBox::Answer::No:
        break;
    }
    return QMessageBox::No;
}

MessageBox::Answer answerOf(int button, const MessageBox& box) {
    switch (button) {
    case QMessageBox::Ok:
        return MessageBox::Answer::Ok;
    case QMessageBox::Yes:
        return MessageBox::Answer::Yes;
    case QMessageBox::No:
        return MessageBox::Answer::No;
    default: // closed without a button
        break;
    }
    return box.canBeLeft ? MessageBox::Answer::Cancel : cautiousAnswer(box.buttons);
}

/// Lets Escape and the close button leave the box without pressing one of its buttons.
void allowClosing(QMessageBox& widget) {
    QPushButton* leave = widget.addButton(QMessageBox::Cancel);
    leave->hide();
    widget.setEscapeButton(leave);
    widget.setInformativeText("Escape goes back to the program.");
}

/// Converts "Text Files (*.txt)|*.txt|All Files (*.*)|*.*" for the toolkit.
QStringList filterOf(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString text = parts[i].section(" (", 0, 0);
        const QString pattern = parts[i + 1] == "*.*" ? "*" : parts[i + 1];
        filters << text + " (" + pattern + ")";
    }
    return filters;
}

/// The file name extension of a filter's pattern, without its point.
QString endingOf(const QString& filter) {
    const QString pattern = filter.section('(', -1).section(')', 0, 0);
    return pattern.startsWith("*.") ? pattern.mid(2) : QString();
}

/// The parent of a box or dialog: the active window, or the only one there is.
QWidget* owner() {
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr)
            return window;
    return nullptr;
}

} // namespace

MessageBox::Answer QtBoxes::show(const MessageBox& box) {
    if (box.reportsCancel)
        return cautiousAnswer(box.buttons);
    QMessageBox widget(owner());
    widget.setObjectName("messageBox");
    widget.setWindowTitle(QString::fromStdString(box.title));
    widget.setTextFormat(Qt::PlainText);
    widget.setText(QString::fromStdString(box.text).remove('\r'));
    widget.setStandardButtons(buttonsOf(box.buttons));
    widget.setDefaultButton(presetOf(box));
    widget.setInformativeText(QString::fromStdString(box.hint));
    if (box.canBeLeft)
        allowClosing(widget);
    if (!box.place.empty())
        widget.setDetailedText(QString::fromStdString(box.place));
    widget.setIcon(iconOf(box.icon));
    const QShortcut abort(Qt::SHIFT | Qt::Key_Escape, &widget);
    QObject::connect(&abort, &QShortcut::activated, &widget, [this, &widget] {
        widget.reject();
        abortRequested.raise();
    });
    return answerOf(widget.exec(), box);
}

std::optional<std::string> QtFileDialogs::ask(const FileDialog& dialog) {
    QFileDialog widget(owner(), QString::fromStdString(dialog.title));
    widget.setObjectName("fileDialog");
    widget.setNameFilters(filterOf(dialog.filter));
    if (dialog.kind == FileDialog::Kind::Save) {
        widget.setAcceptMode(QFileDialog::AcceptSave);
        widget.setDefaultSuffix(endingOf(widget.selectedNameFilter()));
        QObject::connect(
            &widget, &QFileDialog::filterSelected, &widget,
            [&widget](const QString& filter) { widget.setDefaultSuffix(endingOf(filter)); });
    } else {
        widget.setFileMode(QFileDialog::ExistingFile);
    }
    if (!dialog.fileName.empty()) {
        const QFileInfo start(QString::fromStdString(dialog.fileName));
        widget.setDirectory(start.absolutePath());
        widget.selectFile(start.fileName());
    }
    if (widget.exec() != QDialog::Accepted || widget.selectedFiles().isEmpty())
        return std::nullopt;
    return widget.selectedFiles().first().toStdString();
}

void QtPointer::showHourglass(bool busy) {
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtSound::beep() {
    QApplication::beep();
}

void QtEventLoop::turn() {
    if (clock_.nanoseconds() - lastTurn_ < shortestTurn)
        return;
    QCoreApplication::processEvents();
    lastTurn_ = clock_.nanoseconds();
}

void QtEventLoop::waitForEvents(std::int64_t nanoseconds) {
    if (nanoseconds > polledStretch) {
        using namespace std::chrono;
        QTimer wake;
        wake.setTimerType(Qt::PreciseTimer);
        wake.setSingleShot(true);
        wake.start(ceil<milliseconds>(std::chrono::nanoseconds(nanoseconds - polledStretch)));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        lastTurn_ = clock_.nanoseconds();
        return;
    }
    // A timer may come late by more than the deadline allows.
    const std::int64_t end = clock_.nanoseconds() + nanoseconds;
    while (clock_.nanoseconds() < end)
        turn();
}

} // namespace bitlux::gui
