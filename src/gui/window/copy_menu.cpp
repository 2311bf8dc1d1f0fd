#include "gui/window/copy_menu.h"

#include "gui/window/log_view.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>

namespace bitlux::gui {

namespace {

struct Row {
    WordCopies::Form form;
    const char* text;
    QKeyCombination keys;
};

constexpr std::array copyRows{
    Row{WordCopies::Form::Python, "Copy as &Python", Qt::CTRL | Qt::SHIFT | Qt::Key_P},
    Row{WordCopies::Form::CommandLine, "Copy as Command &Line", Qt::CTRL | Qt::SHIFT | Qt::Key_L},
    Row{WordCopies::Form::CBytes, "Copy as C &Bytes", Qt::CTRL | Qt::SHIFT | Qt::Key_B}};

/// Watches a widget for its menu and the keys.
class CopyMenu : public QObject {
public:
    struct Parts {
        const WordCopies& copies;
        std::function<std::vector<CopiedWord>()> words;
        std::function<QMenu*()> menu; ///< with what stands in front
        std::function<void(const QPoint& place)> select = [](const QPoint&) {};
        std::function<QPoint()> placeForKeys = {}; ///< of the viewport; where the toolkit says
    };

    CopyMenu(QWidget& widget, Parts parts) : QObject(&widget), parts_(std::move(parts)) {
        widget.installEventFilter(this);
        if (auto* area = qobject_cast<QAbstractScrollArea*>(&widget))
            area->viewport()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ContextMenu) {
            openMenu(*qobject_cast<QWidget*>(watched), *static_cast<QContextMenuEvent*>(event));
            return true;
        }
        return event->type() == QEvent::KeyPress && copyBy(*static_cast<QKeyEvent*>(event));
    }

private:
    void openMenu(QWidget& widget, const QContextMenuEvent& event) {
        const bool byMouse = event.reason() == QContextMenuEvent::Mouse;
        if (byMouse)
            parts_.select(event.pos());
        const bool hasWords = !parts_.words().empty();
        QMenu* menu = parts_.menu();
        menu->setObjectName("copyMenu");
        menu->setAttribute(Qt::WA_DeleteOnClose);
        for (const Row& row : copyRows) {
            QAction* action = menu->addAction(row.text);
            action->setShortcut(row.keys); // the menu shows it
            action->setEnabled(hasWords);
            connect(action, &QAction::triggered, this, [this, form = row.form] { copy(form); });
        }
        menu->popup(byMouse || !parts_.placeForKeys ? event.globalPos()
                                                    : widget.mapToGlobal(parts_.placeForKeys()));
    }

    bool copyBy(const QKeyEvent& event) {
        const auto* const row =
            std::find_if(copyRows.begin(), copyRows.end(),
                         [&event](const Row& any) { return any.keys == event.keyCombination(); });
        if (row == copyRows.end())
            return false;
        copy(row->form);
        return true;
    }

    void copy(WordCopies::Form form) {
        const std::vector<CopiedWord> words = parts_.words();
        if (!words.empty())
            QApplication::clipboard()->setText(
                QString::fromStdString(parts_.copies.text(form, words)));
    }

    Parts parts_;
};

QMenu* menuWithCopy(QWidget& widget, const std::function<void()>& copy, bool isOf) {
    auto* menu = new QMenu(&widget);
    QAction* action = menu->addAction("&Copy");
    action->setShortcut(QKeySequence::Copy);
    action->setEnabled(isOf);
    QObject::connect(action, &QAction::triggered, &widget, copy);
    menu->addSeparator();
    return menu;
}

} // namespace

void addCopyMenu(LogView& list, const WordCopies& copies,
                 std::function<std::vector<CopiedWord>(int line)> words) {
    const auto copy = [&list] { list.copyLine(); };
    new CopyMenu(
        list,
        {.copies = copies,
         .words =
             [&list, words = std::move(words)] {
                 return list.current() < 0 ? std::vector<CopiedWord>{} : words(list.current());
             },
         .menu = [&list, copy] { return menuWithCopy(list, copy, list.current() >= 0); },
         .select = [&list](const QPoint& place) { list.selectAt(place); },
         .placeForKeys = [&list] { return list.lineRect(std::max(list.current(), 0)).center(); }});
}

void addCopyMenu(QLineEdit& field, const WordCopies& copies,
                 std::function<std::vector<CopiedWord>()> words) {
    new CopyMenu(field, {.copies = copies, .words = std::move(words), .menu = [&field] {
                             QMenu* menu = field.createStandardContextMenu();
                             menu->addSeparator();
                             return menu;
                         }});
}

void addCopyMenu(QTableView& table, const WordCopies& copies,
                 std::function<std::vector<CopiedWord>()> words, std::function<void()> copy) {
    new CopyMenu(
        table,
        {.copies = copies,
         .words = std::move(words),
         .menu =
             [&table, copy = std::move(copy)] {
                 return menuWithCopy(table, copy, table.selectionModel()->hasSelection());
             },
         .placeForKeys = [&table] { return table.visualRect(table.currentIndex()).center(); }});
}

} // namespace bitlux::gui
