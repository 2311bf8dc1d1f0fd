#include "gui/screens/zt72516_screens.h"

#include "bench/chosen_marker_files.h"
#include "bench/scripted_desk.h"
#include "gui/screens/form_picture.h"
#include "gui/screens/snapshot_screens.h"
#include "gui/window/main_window.h"
#include "workbench/virtual_bench.h"

#include <string>
#include <utility>

#include <QDialog>

namespace bitlux::gui {

namespace {

constexpr QSize smallBoard(1024, 600);

/// The panel with everything that the marker file adds.
class Zt72516Stage {
public:
    Zt72516Stage(QString prefix, QString tail)
        : prefix_(std::move(prefix)), tail_(std::move(tail)) {
        bench_.dongle.plug();
        Chip& chip = *bench_.dongle.chip();
        for (const char* name :
             {"VPRE Boosted", "CAN0 Wakeup", "LIN2 Over Temp", "Reset Low > 100ms"})
            chip.turn(switchNamed(chip, name), true);
        program_.Main();
    }

    void paint() {
        MainWindow window(program_);
        window_ = &window;
        program_.forms().show("ZT72516");
        desk_.loop.drive(program_.forms());
        for (const bool isSmall : {false, true}) {
            paintRegisters(isSmall ? "-small" : "");
            paintSequence(isSmall ? "-small" : "");
        }
        paintSnapshots(window, *window.findChild<QDialog*>(), panel(), desk_, prefix_, tail_);
        for (const char* form : {"ZT72516ReadFlags", "ZT72516TestMode"}) {
            program_.forms().show(form);
            if (form == std::string("ZT72516ReadFlags"))
                press("ZT72516ReadFlags.Btn_Read_All_Flags");
            for (const QSize size : {QSize(), smallBoard})
                shoot(form, (size.isEmpty() ? "-" : "-small-") + std::string(form).substr(7), size);
        }
    }

private:
    [[nodiscard]] PanelForm& panel() { return program_.panels().touch("zt72516"); }

    void press(const std::string& button) { program_.forms().get<forms::Button>(button).click(); }

    /// Every page after a read, if it has one.
    void paintRegisters(const std::string& size) {
        const QSize wanted = size.empty() ? QSize() : smallBoard;
        PanelForm& form = panel();
        form.outerTabs.click(1);
        for (int page = 1; page <= form.registerTabs.count(); ++page) {
            form.registerTabs.click(page);
            const std::string& title =
                form.registerTabs.tabs().at(static_cast<std::size_t>(page - 1)).caption;
            readPage(title);
            shoot("ZT72516", size + "-register-" + (page < 10 ? "0" : "") + std::to_string(page),
                  wanted);
            if (title == "W/D Refresh") {
                startWatchdog();
                shoot("ZT72516", size + "-watchdog", wanted);
                program_.forms()
                    .get<forms::CheckBox>("ZT72516.Check_UseSpiDongleForWD")
                    .setValue(0);
            }
        }
    }

    void readPage(const std::string& page) {
        for (const chips::Register& any : panel().chip().registers)
            for (const chips::View& view : any.views)
                if (any.page == page && view.button.exists() && view.row.form.empty())
                    panel().pageControls.run(view.button);
    }

    void startWatchdog() {
        program_.forms().get<forms::CheckBox>("ZT72516.Check_UseSpiDongleForWD").setValue(1);
        for (const char* list : {"Watchdog_Mode", "Watchdog_Timing"})
            program_.forms().get<forms::ComboBox>(std::string("ZT72516.") + list).select(1);
        press("ZT72516.Btn_Start_Watchdog");
    }

    /// A sequence with a loop, in one of its waits.
    void paintSequence(const std::string& size) {
        const QSize wanted = size.empty() ? QSize() : smallBoard;
        PanelSequence& sequence = panel().sequence;
        panel().outerTabs.click(2);
        shoot("ZT72516", size + "-sequence-start", wanted);
        for (int line = sequence.lists.last(); line < 60; line += 3) {
            sequence.lists.append("Init Reg Write", "43580090");
            sequence.lists.append("Goto Init with WD Refresh ", "");
            sequence.lists.append("Wait", "5000");
        }
        sequence.player.Ch_Loop.setValue(1);
        desk_.loop.atTime(clock_.nanoseconds() + 7'300'000'000, [&] {
            shoot("ZT72516", size + "-sequence-run", wanted);
            sequence.player.abandon();
        });
        sequence.player.Cm_Run_Seq_Click();
        sequence.variables.RunEnabled = true;
        sequence.player.Ch_Loop.setValue(0);
    }

    /// The window of a form, in its own size or another.
    void shoot(const std::string& form, const std::string& state, QSize size) {
        saveFormPicture(*window_, program_.forms().form(form).caption(), size,
                        prefix_ + QString::fromStdString(state) + tail_ + ".png");
    }

    const QString prefix_;
    const QString tail_;
    const ChosenMarkerFiles markers_{{"72516TM.TXT"}};
    VirtualClock clock_;
    VirtualBench bench_{clock_, makeDevice("zt72516")};
    ScriptedDesk desk_{clock_};
    Program program_{
        {.port = bench_.port, .usb = bench_.dongle, .clock = clock_, .markers = &markers_},
        desk_.desk()};
    MainWindow* window_ = nullptr;
};

} // namespace

void paintZt72516(const QString& prefix, const QString& tail) {
    Zt72516Stage(prefix, tail).paint();
}

} // namespace bitlux::gui
