#include "gui/configure/pin_marks.h"

#include "gui/desktop/theme.h"

#include <map>

#include <QEvent>
#include <QPainter>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::gui {

namespace {

/// A border over a widget, which stays usable.
class Border : public QWidget {
public:
    explicit Border(QWidget& over) : QWidget(&over) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        over.installEventFilter(this);
        resize(over.size());
        hide();
    }

protected:
    bool eventFilter(QObject* over, QEvent* event) override {
        if (event->type() == QEvent::Resize)
            resize(static_cast<QWidget*>(over)->size());
        return false;
    }
    void paintEvent(QPaintEvent*) override {
        constexpr int width = 2;
        QPainter painter(this);
        painter.setPen(QPen(warningColor(), width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(rect().adjusted(width / 2, width / 2, -width / 2, -width / 2));
    }
};

std::string clashText(const PinClash& clash) {
    std::vector<std::string> lines;
    for (const PinField& field : clash.fields)
        lines.push_back(field.line);
    return fmt::format("Pin {} is used twice: {}", clash.pin, fmt::join(lines, ", "));
}

} // namespace

void PinMarks::add(const forms::ComboBox& control, QComboBox& field) {
    fields_.push_back({&control, &field, new Border(field)});
}

QLabel* PinMarks::makeNote(QWidget* parent) {
    auto* note = new QLabel(parent);
    note->setObjectName("pinClashes");
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    note->hide();
    notes_.push_back(note);
    return note;
}

void PinMarks::follow() {
    std::map<const forms::ComboBox*, QString> texts;
    QStringList all;
    const std::vector<PinClash> clashes =
        form_.usesDongle() ? std::vector<PinClash>() : form_.pinClashes();
    for (const PinClash& clash : clashes) {
        const QString text = QString::fromStdString(clashText(clash));
        all << text;
        for (const PinField& field : clash.fields)
            texts[field.field] = text;
    }
    for (const Field& field : fields_) {
        const auto found = texts.find(field.control);
        const QString text = found == texts.end() ? QString() : found->second;
        field.mark->setVisible(!text.isEmpty());
        if (field.widget->accessibleDescription() != text)
            field.widget->setAccessibleDescription(text);
    }
    for (QLabel* note : notes_) {
        showWarning(*note, true);
        if (note->text() != all.join('\n'))
            note->setText(all.join('\n'));
        note->setVisible(!all.isEmpty());
    }
}

} // namespace bitlux::gui
