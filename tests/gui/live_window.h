#pragma once

#include "gui/desktop/qt_desk.h"
#include "gui/window/main_window.h"
#include "workbench/virtual_bench.h"

#include <memory>

#include <QApplication>
#include <QPushButton>

namespace bitlux::test {

/// The program on the real parts of the window, which the toolkit's loop drives.
struct LiveWindow {
    PacedClock clock;
    VirtualBench bench{clock, makeDevice("loopback")};
    gui::QtDesk desk;
    Program program{bench.hardware(), desk.desk()};
    std::unique_ptr<gui::MainWindow> window;

    LiveWindow() {
        bench.wireFor(program.session());
        desk.boxes.abortRequested.subscribe([this] { program.mainForm().run.cmdAbort_Click(); });
        program.Main();
        ConfigureDialog& dialog = program.dialog();
        dialog.Btn_ParallelPort_Click();
        dialog.cmbSPIWordLength.setText("32");
        dialog.optHex.setValue(true);
        dialog.cmdApply_Click();
        program.mainForm().singleWord.txtHexWordToSend.setText("A5");
        window = std::make_unique<gui::MainWindow>(program);
        window->show();
        QApplication::processEvents();
    }

    QPushButton& button(const char* name) { return *window->findChild<QPushButton*>(name); }
};

} // namespace bitlux::test
