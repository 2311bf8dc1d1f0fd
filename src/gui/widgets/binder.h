#pragma once

#include "gui/widgets/bindings.h"
#include "platform/event.h"
#include "platform/forms/form_set.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include <QKeyEvent>
#include <QObject>
#include <QTimer>

namespace bitlux::gui {

/// Binds the controls of forms to widgets and keeps the widgets up to date: controls that changed
/// are refreshed together, at most once a frame.
class Binder : public QObject {
public:
    static constexpr int frame = 16; ///< milliseconds

    explicit Binder(forms::FormSet& forms);

    void bind(forms::Button& control, QPushButton& widget);
    void bind(forms::Button& control, ConfirmButton& widget);
    void bind(forms::CheckBox& control, QCheckBox& widget);
    void bind(forms::ComboBox& control, QComboBox& widget);
    void bind(forms::Frame& control, QGroupBox& widget);
    void bind(forms::Frame& control, QWidget& page);
    void bind(forms::Label& control, QLabel& widget);
    void bind(forms::ListBox& control, LogView& widget);
    void bind(forms::MenuItem& control, QAction& action);
    void bind(forms::OptionButton& control, QRadioButton& widget);
    void bind(forms::ScrollBar& control, QAbstractSlider& widget);
    void bind(forms::TabStrip& control, QTabBar& widget);
    void bind(forms::TextBox& control, QLineEdit& widget);
    void bind(forms::Timer& control, QTimer& timer);

    /// A new widget, bound to a control.
    template <typename Widget, typename Control>
    Widget* make(Control& control, QWidget* parent) {
        auto* widget = new Widget(parent);
        bind(control, *widget);
        return widget;
    }

    /// Flushes soon, even when no control changes.
    void flushSoon();
    /// Refreshes what changed, immediately.
    void flush();
    /// The program's colours have changed.
    void refreshAll();
    /// After a flush.
    Event<> flushed;
    /// After a control's key handler has handled Enter.
    Event<const forms::Control&> enterTaken;

    /// The controls of a form are destroyed; their widgets do nothing any more, and may be
    /// destroyed later.
    void forget(const forms::Form& form);

    /// Declares that a control has no widget on purpose: nothing shows it.
    void leaveOut(const forms::Control& control) { leftOut_.insert(&control); }

    [[nodiscard]] bool isLeftOut(const forms::Control& control) const {
        return leftOut_.contains(&control);
    }
    [[nodiscard]] bool isBound(const forms::Control& control) const {
        return bindings_.contains(&control);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void performInput(const std::function<void()>& action);
    void refresh(Binding& binding);
    void followFocus(const Binding& binding);
    bool keyPressed(forms::Control& control, QObject* widget, const QKeyEvent& event);
    bool typed(forms::TextBox& control, QLineEdit& widget, const QKeyEvent& event);

    template <typename B, typename Control, typename Widget>
    void add(Control& control, Widget& widget);

    forms::FormSet& forms_;
    std::unordered_map<const forms::Control*, std::unique_ptr<Binding>> bindings_;
    std::unordered_map<const QObject*, forms::Control*> controls_;
    std::unordered_set<const forms::Control*> leftOut_;
    /// The control of a form that had the focus when the window last followed it. The user may have
    /// moved the focus since, to a widget that is no control; it stays there.
    std::unordered_map<const forms::Form*, const forms::Control*> focused_;
    QTimer timer_;
    Subscription becameDirty_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
