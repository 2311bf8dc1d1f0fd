#pragma once

#include "gui/window/main_window.h"
#include "support/test_bench.h"

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>

namespace bitlux::test {

/// The program on the virtual bench in its window, used by mouse and keyboard through the object
/// names of the widgets.
struct WindowBench : TestBench {
    TemporaryFolder folder;
    gui::UserSettings settings{QString::fromStdString(folder.path("window.conf"))};
    gui::MainWindow window{program, settings};

    explicit WindowBench(const std::string& device = "loopback") : TestBench(device) {
        window.fitToContent();
        window.show();
        window.activateWindow();
        settle();
    }

    /// Brings the window up to date.
    void settle() {
        window.binder().flush();
        QApplication::processEvents();
    }

    void configure(const std::string& bits, const std::vector<std::string>& options = {"optHex"}) {
        TestBench::configure(bits, options);
        settle();
    }
    void choose(const std::string& item) {
        TestBench::choose(item);
        settle();
    }

    /// A widget that is up to date.
    template <typename Widget>
    Widget& widget(const QString& name) {
        settle();
        return widgetAsItIs<Widget>(name);
    }
    template <typename Widget>
    Widget& widgetAsItIs(const QString& name) {
        auto* found = window.findChild<Widget*>(name);
        if (found == nullptr)
            throw std::runtime_error("no widget " + name.toStdString());
        return *found;
    }

    /// The window of a form beside the main one.
    QDialog* dialog(const std::string& form) {
        for (QDialog* any : window.findChildren<QDialog*>())
            if (any->windowTitle().toStdString() == program.forms().form(form).caption())
                return any;
        throw std::runtime_error("no window of " + form);
    }

    void press(const QString& name) {
        QTest::mouseClick(&widget<QPushButton>(name), Qt::LeftButton);
        settle();
    }
    void type(const QString& name, const QString& text) {
        auto& edit = widget<QLineEdit>(name);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
        settle();
    }
};

/// The window of a panel, with a model of its chip behind the dongle.
struct PanelWindow : WindowBench {
    PanelWindow(const std::string& device, const std::string& form) : WindowBench(device) {
        bench.dongle.plug();
        program.mainForm().call("Start_USB");
        program.forms().show(form);
        panel = dialog(form);
        panel->activateWindow();
        settle();
    }

    QPointer<QDialog> panel;
};

} // namespace bitlux::test
