#include "gui/screens/zt72518_screens.h"

#include "gui/screens/bench_program.h"
#include "gui/screens/form_picture.h"
#include "gui/screens/snapshot_screens.h"
#include "gui/window/main_window.h"
#include "panels/common/sequence_stops.h"
#include "panels/zt72518/diagram_page.h"

#include <string_view>
#include <utility>

#include <QApplication>
#include <QDialog>

namespace bitlux::gui {

namespace {

class Zt72518Stage : BenchProgram {
public:
    Zt72518Stage() : BenchProgram("zt72518d") {
        bench_.wireFor(program_.session());
        program_.Main();
        bench_.dongle.plug();
        program_.mainForm().call("Start_USB");
    }

    void paint(const QString& prefix, const QString& tail) {
        Chip& chip = *bench_.dongle.chip();
        for (const char* name : {"SPI ERR", "FWU", "Lin 1/Rx High", "VDD OV", "VSUV", "I/O 0"})
            chip.turn(switchNamed(chip, name), true);
        MainWindow window(program_);
        program_.panels().show("zt72518");
        PanelForm& form = panel();
        QWidget& panel = *window.findChild<QDialog*>();
        for (const char* button :
             {"Cm_ReadAll_Rl(0)", "Cm_ReadAll_Rh", "Cm_ReadAll_RFl", "Seq_All_RFl"})
            dynamic_cast<forms::Button&>(form.control(button)).click();
        dynamic_cast<forms::OptionButton&>(form.control("R_MUX(5)")).click();
        saveRegisterPages(window, panel, form, prefix, tail);
        form.sequence.player.Cm_Run_Seq_Click();
        form.sequence.player.Ch_Loop.click();
        form.part<SequenceStops>().Ch_FirstCondition.click();
        for (int page = 1; page <= form.outerTabs.count(); ++page) {
            form.outerTabs.click(page);
            if (form.shows("mode diagram"))
                form.part<zt72518::DiagramPage>().timer_auto_pre_Timer();
            savePicture(window, panel, prefix + QString("-page-%1").arg(page) + tail);
        }
        paintPanelRun(window, panel, prefix, tail);
        paintPanelSizes(window, panel, prefix, tail);
        dynamic_cast<forms::OptionButton&>(form.control("opt_vb(5)")).click();
        choose("registers");
        savePicture(window, panel, prefix + "-disabled" + tail);
        choose("flags");
        savePicture(window, panel, prefix + "-disabled-flags" + tail);
        choose("registers");
        paintSnapshots(window, panel, form, desk_, prefix, tail);
        program_.forms().unload("ZT72518");
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        paintTestMode(window, prefix + "-test-mode", tail);
    }

private:
    /// A long sequence in one of its waits.
    void paintPanelRun(MainWindow& window, QWidget& panel, const QString& prefix,
                       const QString& tail) {
        PanelSequence& sequence = this->panel().sequence;
        choose("sequence");
        this->panel().part<SequenceStops>().Ch_FirstCondition.click();
        for (int line = sequence.lists.last(); line < 69; ++line)
            sequence.lists.append("MUX Read Low", "");
        sequence.lists.append("Wait", "5000");
        for (int line = 0; line < 30; ++line)
            sequence.lists.append("MUX Write", "A0");
        desk_.loop.atTime(clock_.nanoseconds() + 2'300'000'000, [&] {
            savePicture(window, panel, prefix + "-run" + tail);
            sequence.player.Timer1.disable();
        });
        sequence.player.Cm_Run_Seq_Click();
    }

    void paintPanelSizes(MainWindow& window, QWidget& panel, const QString& prefix,
                         const QString& tail) {
        forms::TabStrip& pages = this->panel().outerTabs;
        forms::TabStrip& registers = this->panel().registerTabs;
        constexpr int initWdogPage = 4;
        registers.click(initWdogPage);
        for (const auto& [name, size] :
             {std::pair("-small", QSize(960, 600)), std::pair("-large", QSize(1600, 1000))}) {
            for (int page = 1; page <= pages.count(); ++page) {
                pages.click(page);
                panel.resize(size);
                savePicture(window, panel, prefix + name + QString("-%1").arg(page) + tail);
            }
        }
        registers.click(registers.count());
    }

    void paintTestMode(MainWindow& window, const QString& prefix, const QString& tail) {
        program_.forms().show("TestMode");
        QWidget& dialog = *window.findChild<QDialog*>();
        savePicture(window, dialog, prefix + tail);
        forms::Form& form = program_.forms().form("TestMode");
        dynamic_cast<forms::OptionButton&>(form.control("trim_fuse(3)")).click();
        dynamic_cast<forms::ComboBox&>(form.control("thres_combox")).select(2);
        savePicture(window, dialog, prefix + "-fuses" + tail);
        program_.forms().unload("TestMode");
    }

    [[nodiscard]] PanelForm& panel() { return program_.panels().touch("zt72518"); }
    void choose(std::string_view page) {
        for (int tab = 1; !panel().shows(page); ++tab)
            panel().outerTabs.click(tab);
    }
};

} // namespace

void paintZt72518(const QString& prefix, const QString& tail) {
    Zt72518Stage().paint(prefix, tail);
}

} // namespace bitlux::gui
