#include "gui/window/log_accessible.h"

#include "gui/window/log_view.h"

#include <map>

#include <QAccessibleWidget>

namespace bitlux::gui {

namespace {

/// A visible line of the list, by its position. Its text changes as the list scrolls.
class LinePlace : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    LinePlace(LogView& view, QAccessibleInterface& list, int place)
        : view_(view), list_(list), place_(place) {}

    [[nodiscard]] bool isValid() const override { return place_ < view_.visibleCount(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override { return &list_; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? view_.line(index()) : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QRect rect() const override {
        const QRect row = view_.lineRect(index());
        return {view_.viewport()->mapToGlobal(row.topLeft()), row.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        const bool isCurrent = index() == view_.current();
        state.selectable = true;
        state.selected = isCurrent;
        state.focusable = true;
        state.focused = isCurrent && view_.hasFocus();
        state.invalid = !isValid();
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    /// A click on the line.
    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction() && isValid() && view_.isEnabled())
            emit view_.selected(index());
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    [[nodiscard]] int index() const { return view_.firstVisible() + place_; }

    LogView& view_;
    QAccessibleInterface& list_;
    int place_;
};

class AccessibleLog : public QAccessibleWidget {
public:
    explicit AccessibleLog(LogView& view)
        : QAccessibleWidget(&view, QAccessible::List), view_(view) {}
    ~AccessibleLog() override {
        for (const auto& [place, id] : places_)
            QAccessible::deleteAccessibleInterface(id);
    }
    AccessibleLog(const AccessibleLog&) = delete;
    AccessibleLog& operator=(const AccessibleLog&) = delete;

    [[nodiscard]] int childCount() const override { return view_.visibleCount(); }
    [[nodiscard]] QAccessibleInterface* child(int place) const override {
        if (place < 0 || place >= childCount())
            return nullptr;
        auto found = places_.find(place);
        if (found == places_.end()) {
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): a child hands out its parent
            auto* made = new LinePlace(view_, const_cast<AccessibleLog&>(*this), place);
            found = places_.emplace(place, QAccessible::registerAccessibleInterface(made)).first;
        }
        return QAccessible::accessibleInterface(found->second);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        for (const auto& [place, id] : places_)
            if (QAccessible::accessibleInterface(id) == child)
                return place;
        return -1;
    }

private:
    LogView& view_;
    mutable std::map<int, QAccessible::Id> places_; ///< owned by the toolkit's registry
};

} // namespace

QAccessibleInterface* logInterface(const QString&, QObject* object) {
    auto* view = qobject_cast<LogView*>(object);
    return view == nullptr ? nullptr : new AccessibleLog(*view);
}

} // namespace bitlux::gui
