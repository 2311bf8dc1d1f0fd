#include "gui/widgets/label_accessible.h"

#include "gui/widgets/label_behaviour.h"

#include <QAccessibleWidget>

namespace bitlux::gui {

namespace {

class AccessibleLabel : public QAccessibleWidget {
public:
    AccessibleLabel(QLabel& label, LabelBehaviour& behaviour)
        : QAccessibleWidget(&label), label_(label), behaviour_(behaviour) {}

    [[nodiscard]] QAccessible::Role role() const override {
        if (behaviour_.isLamp())
            return QAccessible::CheckBox;
        return behaviour_.isPressable() ? QAccessible::Button : QAccessible::StaticText;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = behaviour_.isLamp();
        state.checked = behaviour_.isLit();
        state.readOnly = !behaviour_.isPressable();
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const QString given = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && given.isEmpty() ? label_.text() : given;
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (behaviour_.isPressable() && label_.isEnabled())
            names.prepend(press());
        return names;
    }
    void doAction(const QString& name) override {
        if (name == press())
            behaviour_.press();
        else
            QAccessibleWidget::doAction(name);
    }

    [[nodiscard]] QVector<QPair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override {
        auto all = QAccessibleWidget::relations(match);
        if (match.testFlag(QAccessible::Labelled) && label_.buddy() != nullptr)
            all.append(
                {QAccessible::queryAccessibleInterface(label_.buddy()), QAccessible::Labelled});
        return all;
    }

private:
    [[nodiscard]] QString press() const {
        return behaviour_.isLamp() ? toggleAction() : pressAction();
    }

    QLabel& label_;
    LabelBehaviour& behaviour_;
};

} // namespace

QAccessibleInterface* labelInterface(const QString&, QObject* object) {
    auto* label = qobject_cast<QLabel*>(object);
    LabelBehaviour* behaviour = label == nullptr ? nullptr : LabelBehaviour::of(*label);
    return behaviour == nullptr ? nullptr : new AccessibleLabel(*label, *behaviour);
}

} // namespace bitlux::gui
