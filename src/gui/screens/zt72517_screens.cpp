#include "gui/screens/zt72517_screens.h"

#include "gui/bench/bench_view.h"
#include "gui/screens/bench_program.h"
#include "gui/window/main_window.h"

#include <QApplication>

namespace bitlux::gui {

namespace {

class Zt72517Stage : BenchProgram {
public:
    Zt72517Stage() : BenchProgram("zt72517") {
        Chip& chip = *bench_.dongle.chip();
        for (const char* name : {"CAN F", "CANF0", "CANF2", "BATFAIL", "VSUV"})
            chip.turn(switchNamed(chip, name), true);
        bench_.wireFor(program_.session());
        program_.Main();
        program_.dialog().CheckEnable72517.setValue(1);
        program_.dialog().cmdApply_Click();
    }

    void paint(const QString& prefix, const QString& tail) {
        MainWindow window(program_);
        window.show();
        turnTo(3);
        shoot(window, prefix + "-no-dongle" + tail);
        bench_.dongle.plug();
        turnTo(1);
        turnTo(3);
        for (const char* control :
             {"mode(2)", "can_wu_opt", "sr_opt(1)", "flag_line1_ref", "flag_line2_ref",
              "flag_line4_ref", "flag_line3_ref", "auto_opt(0)"})
            program_.forms().control(std::string("frmMain.") + control).click();
        shoot(window, prefix + "-flags" + tail);
        window.addDockWidget(Qt::BottomDockWidgetArea,
                             new BenchView(bench_, program_, "zt72517", window.binder(), &window));
        shoot(window, prefix + "-bench" + tail);
        window.resize(640, 480);
        shoot(window, prefix + "-small" + tail, true);
    }

private:
    void turnTo(int tab) { program_.mainForm().tabs.TabStripMain.click(tab); }

    static void shoot(MainWindow& window, const QString& name, bool asItIs = false) {
        window.binder().flush();
        QApplication::processEvents();
        if (!asItIs)
            window.fitToContent();
        QApplication::processEvents();
        window.grab().save(name + ".png");
    }
};

} // namespace

void paintZt72517(const QString& prefix, const QString& tail) {
    Zt72517Stage().paint(prefix, tail);
}

} // namespace bitlux::gui
