#pragma once

#include "gui/widgets/confirm_button.h"
#include "gui/widgets/digits_label.h"
#include "gui/widgets/label_behaviour.h"
#include "gui/window/log_view.h"
#include "platform/forms/controls.h"
#include "platform/forms/timer.h"

#include <functional>

#include <QAbstractSlider>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>

namespace bitlux::gui {

/// Binds a control to its widget: the widget's object name is the control's full name, refresh()
/// updates the widget with its signals blocked, and user input on the widget goes to the control.
class Binding {
public:
    Binding(forms::Control& control, QObject& object);
    virtual ~Binding() = default;
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;

    [[nodiscard]] forms::Control& control() const { return control_; }
    [[nodiscard]] QObject& object() const { return object_; }

    /// Nothing once the control is destroyed.
    void refresh() {
        if (!gone_)
            bringUpToDate();
    }
    /// The control is destroyed; the widget remains for a while and does nothing.
    void leave();

protected:
    /// Runs an input of the user. For a control that was hidden or disabled since the last refresh
    /// only the refresh happens, whatever the widget still shows.
    void performInput(const std::function<void()>& action);
    virtual void bringUpToDate() = 0;

private:
    forms::Control& control_;
    QObject& object_;
    bool gone_ = false;
};

/// The common part of all controls that are widgets.
class WidgetBinding : public Binding {
public:
    WidgetBinding(forms::Control& control, QWidget& widget);

protected:
    void bringUpToDate() final;
    /// Updates what is special about the kind.
    virtual void refreshContent() = 0;

private:
    void refreshColor();

    QWidget& widget_;
    forms::Color color_; ///< the colour shown; initially that of the kind
    forms::Color ownColor_;
    qint64 theme_ = 0; ///< palette of the program when the colour was shown
};

class ButtonBinding : public WidgetBinding {
public:
    ButtonBinding(forms::Button& control, QPushButton& widget);
    void refreshContent() override;

private:
    forms::Button& control_;
    QPushButton& widget_;
};

/// A press counts when it is confirmed.
class ConfirmBinding : public WidgetBinding {
public:
    ConfirmBinding(forms::Button& control, ConfirmButton& widget);
    void refreshContent() override;

private:
    forms::Button& control_;
    ConfirmButton& widget_;
};

/// A widget that already has a text keeps it.
class CheckBoxBinding : public WidgetBinding {
public:
    CheckBoxBinding(forms::CheckBox& control, QCheckBox& widget);
    void refreshContent() override;

private:
    forms::CheckBox& control_;
    QCheckBox& widget_;
    bool hasOwnText_;
};

class OptionButtonBinding : public WidgetBinding {
public:
    OptionButtonBinding(forms::OptionButton& control, QRadioButton& widget);
    void refreshContent() override;

private:
    forms::OptionButton& control_;
    QRadioButton& widget_;
};

class ComboBoxBinding : public WidgetBinding {
public:
    ComboBoxBinding(forms::ComboBox& control, QComboBox& widget);
    void refreshContent() override;

private:
    forms::ComboBox& control_;
    QComboBox& widget_;
    std::vector<std::string> shown_;
};

/// A frame that is a page: only visible or not.
class PageBinding : public WidgetBinding {
public:
    PageBinding(forms::Frame& control, QWidget& page) : WidgetBinding(control, page) {}
    void refreshContent() override {}
};

class FrameBinding : public WidgetBinding {
public:
    FrameBinding(forms::Frame& control, QGroupBox& widget);
    void refreshContent() override;

private:
    forms::Frame& control_;
    QGroupBox& widget_;
};

class LabelBinding : public WidgetBinding {
public:
    LabelBinding(forms::Label& control, QLabel& widget);
    void refreshContent() override;

private:
    forms::Label& control_;
    QLabel& widget_;
    LabelBehaviour& behaviour_;
};

class ListBoxBinding : public WidgetBinding {
public:
    ListBoxBinding(forms::ListBox& control, LogView& widget);
    void refreshContent() override;

private:
    forms::ListBox& control_;
    LogView& widget_;
};

class ScrollBarBinding : public WidgetBinding {
public:
    ScrollBarBinding(forms::ScrollBar& control, QAbstractSlider& widget);
    void refreshContent() override;

private:
    forms::ScrollBar& control_;
    QAbstractSlider& widget_;
};

class TabStripBinding : public WidgetBinding {
public:
    TabStripBinding(forms::TabStrip& control, QTabBar& widget);
    void refreshContent() override;

private:
    forms::TabStrip& control_;
    QTabBar& widget_;
    std::vector<forms::TabStrip::Tab> shown_;
};

class TextBoxBinding : public WidgetBinding {
public:
    TextBoxBinding(forms::TextBox& control, QLineEdit& widget);
    void refreshContent() override;

private:
    forms::TextBox& control_;
    QLineEdit& widget_;
};

class TimerBinding : public Binding {
public:
    TimerBinding(forms::Timer& control, QTimer& timer);

protected:
    void bringUpToDate() override;

private:
    forms::Timer& control_;
    QTimer& timer_;
};

class MenuItemBinding : public Binding {
public:
    MenuItemBinding(forms::MenuItem& control, QAction& action);

protected:
    void bringUpToDate() override;

private:
    forms::MenuItem& control_;
    QAction& action_;
};

} // namespace bitlux::gui
