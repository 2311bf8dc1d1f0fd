#include "gui/qt_desk.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
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

MessageBox::Answer answerOf(int button, MessageBox::Buttons buttons) {
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
    return cautiousAnswer(buttons);
}

/// "Text Files (*.txt)|*.txt|All Files (*.*)|*.*" as the toolkit wants it.
QString filterOf(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString text = parts[i].section(" (", 0, 0);
        const QString pattern = parts[i + 1] == "*.*" ? "*" : parts[i + 1];
        filters << text + " (" + pattern + ")";
    }
    return filters.join(";;");
}

} // namespace

MessageBox::Answer QtBoxes::show(const MessageBox& box) {
    QMessageBox widget(QApplication::activeWindow());
    widget.setObjectName("messageBox");
    widget.setWindowTitle(QString::fromStdString(box.title));
    widget.setTextFormat(Qt::PlainText);
    widget.setText(QString::fromStdString(box.text).remove('\r'));
    widget.setStandardButtons(buttonsOf(box.buttons));
    widget.setIcon(iconOf(box.icon));
    return answerOf(widget.exec(), box.buttons);
}

std::optional<std::string> QtFileDialogs::ask(const FileDialog& dialog) {
    QWidget* parent = QApplication::activeWindow();
    const QString title = QString::fromStdString(dialog.title);
    const QString start = QString::fromStdString(dialog.fileName);
    const QString filter = filterOf(dialog.filter);
    const QString name = dialog.kind == FileDialog::Kind::Save
                             ? QFileDialog::getSaveFileName(parent, title, start, filter)
                             : QFileDialog::getOpenFileName(parent, title, start, filter);
    if (name.isEmpty())
        return std::nullopt;
    return name.toStdString();
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
        wake.start(
            duration_cast<milliseconds>(std::chrono::nanoseconds(nanoseconds - polledStretch)));
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
