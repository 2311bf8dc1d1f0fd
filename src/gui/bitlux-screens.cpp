// Writes a picture of every form in its main states, for visual checks: all of them; those of the
// panel of the ZT7251x family with "panel", of the ZT72516 with "zt72516", of the chips whose words
// are bytes with "bytes"; the decoded log with "decoded", the notices of the status line with
// "notices", the waveforms with "waveform", the page of the ZT72517 with "zt72517", the adapter
// of the bench with "adapter"; or those of the
// panel of a chip's file with "chip" and its name. A folder and the scale precede these.

#include "bench/scripted_desk.h"
#include "chips/chip_library.h"
#include "gui/bench/bench_view.h"
#include "gui/configure/type_diagram.h"
#include "gui/desktop/theme.h"
#include "gui/help/help_window.h"
#include "gui/screens/adapter_screens.h"
#include "gui/screens/byte_panel_screens.h"
#include "gui/screens/decoded_screens.h"
#include "gui/screens/notice_screens.h"
#include "gui/screens/snapshot_screens.h"
#include "gui/screens/waveform_screens.h"
#include "gui/screens/zt72516_screens.h"
#include "gui/screens/zt72517_screens.h"
#include "gui/window/main_window.h"
#include "gui/window/recent_menu.h"
#include "panels/common/sequence_stops.h"
#include "panels/zt72518/diagram_page.h"
#include "platform/linux/user_marker_files.h"
#include "workbench/virtual_bench.h"

#include <array>
#include <string_view>

#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <fmt/format.h>

namespace {

using namespace bitlux;

struct State {
    const char* name;
    const char* bits;
    bool hex;
    std::vector<const char*> words; ///< hexadecimal, or a bit button to press
};

/// A program on the virtual bench, brought into a state and painted.
class Stage {
public:
    Stage() {
        bench_.wireFor(program_.session());
        program_.Main();
    }

    void bring(const State& state) {
        ConfigureDialog& dialog = program_.dialog();
        dialog.Btn_ParallelPort_Click();
        dialog.cmbSPIWordLength.setText(state.bits);
        (state.hex ? dialog.optHex : dialog.optBinary).setValue(true);
        dialog.cmdApply_Click();
    }

    void paint(const QString& file, QSize size, const State* state = nullptr,
               const char* device = "echo", const QString& search = {}) {
        gui::MainWindow window(program_);
        window.addDockWidget(
            Qt::BottomDockWidgetArea,
            new gui::BenchView(bench_, program_, device, window.binder(), &window));
        if (auto* field = window.findChild<QLineEdit*>("chip.search"))
            field->setText(search);
        if (state != nullptr)
            sendWords(*state, window);
        window.show();
        if (size.isEmpty())
            window.fitToContent();
        else
            window.resize(size);
        window.view().focusEntry();
        window.binder().flush();
        QApplication::processEvents();
        window.grab().save(file);
    }

    /// Refreshes after each word, as between two clicks of a user.
    void sendWords(const State& state, gui::MainWindow& window) {
        for (const char* word : state.words) {
            if (state.hex)
                program_.mainForm().singleWord.txtHexWordToSend.setText(word);
            else
                program_.mainForm().singleWord.cmdSI_single(std::atoi(word)).click();
            program_.mainForm().run.cmdSendOnce.click();
            window.binder().flush();
        }
    }

    void paintDialog(const QString& prefix) {
        gui::MainWindow window(program_);
        program_.dialog().setVisible(true);
        auto* dialog = window.findChild<QDialog*>();
        for (int page = 1; page <= program_.dialog().FrameConfig.last(); ++page) {
            program_.dialog().TabStripConfig.click(page);
            window.binder().flush();
            QApplication::processEvents();
            dialog->grab().save(prefix + QString("-%1.png").arg(page));
        }
        program_.dialog().setVisible(false);
    }

    /// The Batch page: at the start, filled, in a wait of a continuous run; and its dialogs.
    void paintBatch(const QString& prefix, const QString& tail) {
        MainForm& form = program_.mainForm();
        gui::MainWindow window(program_);
        window.show();
        form.tabs.TabStripMain.click(2);
        window.binder().flush();
        window.fitToContent();
        shoot(window, window, prefix + "-empty" + tail);
        fillBatch();
        shoot(window, window, prefix + "-filled" + tail);
        form.batches.cmdSaveBatch.click();
        shoot(window, *window.findChild<QDialog*>(), prefix + "-save" + tail);
        program_.saveBatchForm().txtBatchName.edit("Night watch");
        program_.saveBatchForm().cmdSave.click();
        form.editor.cmdAddWait.click();
        for (auto* dialog : window.findChildren<QDialog*>())
            if (dialog->isVisible())
                shoot(window, *dialog, prefix + "-wait" + tail);
        program_.addWaitForm().cmdCancel.click();
        desk_.boxes.answer(MessageBox::Answer::Ok);
        desk_.loop.atTime(clock_.nanoseconds() + 1'300'000'000, [&] {
            shoot(window, window, prefix + "-running" + tail);
            window.resize(640, 480);
            shoot(window, window, prefix + "-small" + tail);
            form.run.cmdStopContinuous.click();
        });
        form.run.cmdSendContinuous.click();
    }

    void paintPartTabs(const QString& file, QSize size) {
        ConfigureDialog& dialog = program_.dialog();
        for (forms::CheckBox* part : {&dialog.CheckEnable72361, &dialog.CheckEnable72517,
                                      &dialog.CheckEnable72518, &dialog.CheckEnable72537})
            part->setValue(1);
        dialog.cmdApply_Click();
        paint(file, size);
    }

    void paintPartPages(const QString& prefix, const QString& tail) {
        ConfigureDialog& dialog = program_.dialog();
        gui::MainWindow window(program_);
        window.show();
        for (forms::CheckBox* part :
             {&dialog.CheckEnable72361, &dialog.CheckEnable72517, &dialog.CheckEnable72518,
              &dialog.CheckEnable72537, &dialog.CheckEnable72516}) {
            part->setValue(1);
            dialog.cmdApply_Click();
            program_.mainForm().tabs.TabStripMain.click(3);
            window.resize(760, 420);
            shoot(window, window,
                  prefix + "-" + QString::fromStdString(part->name()).right(5) + tail);
            part->setValue(0);
        }
        dialog.cmdApply_Click();
    }

    /// About, the help, and the menu of recent files.
    void paintHelp(const QString& folder, const QString& tail) {
        QTemporaryDir settings;
        gui::UserSettings recent(settings.filePath("window.conf"));
        for (const char* file : {"/home/lab/boards/lamp & motor.spi", "/home/lab/wake up.spi"})
            recent.fileUsed(file);
        program_.session().ConfigFileName = "/home/lab/wake up.spi";
        gui::MainWindow window(program_, recent);
        window.show();
        auto* menu = window.findChild<gui::RecentMenu*>();
        menu->popup({40, 40});
        shoot(window, *menu, folder + "/recent" + tail);
        menu->close();
        program_.mainForm().itemAbout.click();
        shoot(window, *window.findChild<QDialog*>(), folder + "/about" + tail);
        program_.aboutForm().cmdOK.click();
        gui::HelpWindow help;
        help.bringToFront();
        auto& contents = *help.findChild<QListWidget*>();
        for (int page = 0; page < contents.count(); ++page) {
            contents.setCurrentRow(page);
            shoot(window, help, folder + QString("/help-%1").arg(page) + tail);
        }
    }

    void showExtraPins() {
        ConfigureDialog& dialog = program_.dialog();
        const std::array<std::pair<int, const char*>, 2> pins{{{0, "5"}, {1, "6"}}};
        for (const auto& [row, pin] : pins) {
            dialog.extraPins.dataPins.enable(row).setValue(1);
            dialog.extraPins.dataPins.assignment(row).setText(pin);
        }
        for (int pin = 0; pin < 9; pin += 2)
            dialog.extraPins.Check(pin).setValue(1);
        dialog.cmdApply_Click();
        program_.mainForm().extraPins.optSetHighNow(1).click();
        program_.mainForm().extraPins.TabStripLogPinsNow.click(2);
    }

    void paintChip(const QString& file, QSize size, const QString& search = {}) {
        bench_.connect(makeDevice("zt72518d"));
        Chip& chip = *bench_.dongle.chip();
        for (const char* name : {"SPI ERR", "FWU", "Lin 1/Rx High", "VDD OV", "VSUV", "I/O 0"})
            chip.turn(switchNamed(chip, name), true);
        paint(file, size, nullptr, "zt72518d", search);
    }

    /// All pages of the panel of the ZT7251x family with a model of the chip, and its test mode.
    void paintPanel(const QString& prefix, const QString& tail) {
        bench_.connect(makeDevice("zt72518d"));
        Chip& chip = *bench_.dongle.chip();
        for (const char* name : {"SPI ERR", "FWU", "Lin 1/Rx High", "VDD OV", "VSUV", "I/O 0"})
            chip.turn(switchNamed(chip, name), true);
        program_.mainForm().call("Start_USB");
        gui::MainWindow window(program_);
        program_.panels().show("zt72518");
        PanelForm& form = panel();
        QWidget& panel = *window.findChild<QDialog*>();
        for (const char* button :
             {"Cm_ReadAll_Rl(0)", "Cm_ReadAll_Rh", "Cm_ReadAll_RFl", "Seq_All_RFl"})
            dynamic_cast<forms::Button&>(form.control(button)).click();
        dynamic_cast<forms::OptionButton&>(form.control("R_MUX(5)")).click();
        paintRegisters(form, window, panel, prefix, tail);
        form.sequence.player.Cm_Run_Seq_Click();
        form.sequence.player.Ch_Loop.click();
        form.part<SequenceStops>().Ch_FirstCondition.click();
        for (int page = 1; page <= form.outerTabs.count(); ++page) {
            form.outerTabs.click(page);
            if (form.shows("mode diagram"))
                form.part<zt72518::DiagramPage>().timer_auto_pre_Timer();
            shoot(window, panel, prefix + QString("-page-%1").arg(page) + tail);
        }
        paintPanelRun(window, panel, prefix, tail);
        paintPanelSizes(window, panel, prefix, tail);
        dynamic_cast<forms::OptionButton&>(form.control("opt_vb(5)")).click();
        choose("registers");
        shoot(window, panel, prefix + "-disabled" + tail);
        choose("flags");
        shoot(window, panel, prefix + "-disabled-flags" + tail);
        choose("registers");
        gui::paintSnapshots(window, panel, form, desk_, prefix, tail);
        program_.forms().unload("ZT72518");
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        paintTestMode(window, prefix + "-test-mode", tail);
    }

    /// All pages of the panel that a chip's file describes.
    void paintDescribed(const std::string& file, const QString& prefix, const QString& tail) {
        const chips::ChipFile read = chips::readChipFile(file);
        if (!read.chip) {
            fmt::print(stderr, "{}", chips::describe(read.problems, file));
            return;
        }
        const std::string& name = read.chip->panel.form;
        const Desk desk = desk_.desk();
        const UserMarkerFiles markers;
        forms::FormSlot<PanelForm> slot(program_.forms(), name, [&] {
            return std::make_unique<PanelForm>(program_.forms(), name, read.chip,
                                               PanelSurroundings{.session = program_.session(),
                                                                 .engine = program_.engine(),
                                                                 .dongle = program_.dongle(),
                                                                 .desk = desk,
                                                                 .markers = markers,
                                                                 .clock = clock_});
        });
        gui::MainWindow window(program_);
        program_.forms().show(name);
        QWidget& panel = *window.findChild<QDialog*>();
        panel.resize(1024, 600);
        PanelForm& form = *slot;
        for (int page = 1; page <= form.outerTabs.count(); ++page) {
            form.outerTabs.click(page);
            if (form.shows("registers"))
                paintRegisters(form, window, panel, prefix, tail);
            else
                shoot(window, panel, prefix + QString("-page-%1").arg(page) + tail);
        }
        gui::paintSnapshots(window, panel, form, desk_, prefix, tail);
        program_.forms().unload(name);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Every page of registers of a panel.
    static void paintRegisters(PanelForm& form, gui::MainWindow& window, QWidget& panel,
                               const QString& prefix, const QString& tail) {
        for (int page = 1; page <= form.registerTabs.count(); ++page) {
            form.registerTabs.click(page);
            shoot(window, panel,
                  prefix + QString("-register-%1").arg(page, 2, 10, QChar('0')) + tail);
        }
    }

    /// A long sequence in one of its waits.
    void paintPanelRun(gui::MainWindow& window, QWidget& panel, const QString& prefix,
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
            shoot(window, panel, prefix + "-run" + tail);
            sequence.player.Timer1.disable();
        });
        sequence.player.Cm_Run_Seq_Click();
    }

    void paintPanelSizes(gui::MainWindow& window, QWidget& panel, const QString& prefix,
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
                shoot(window, panel, prefix + name + QString("-%1").arg(page) + tail);
            }
        }
        registers.click(registers.count());
    }

    void paintTestMode(gui::MainWindow& window, const QString& prefix, const QString& tail) {
        program_.forms().show("TestMode");
        QWidget& dialog = *window.findChild<QDialog*>();
        shoot(window, dialog, prefix + tail);
        forms::Form& form = program_.forms().form("TestMode");
        dynamic_cast<forms::OptionButton&>(form.control("trim_fuse(3)")).click();
        dynamic_cast<forms::ComboBox&>(form.control("thres_combox")).select(2);
        shoot(window, dialog, prefix + "-fuses" + tail);
        program_.forms().unload("TestMode");
    }

    void plugDongle() {
        bench_.dongle.plug();
        program_.mainForm().call("Start_USB");
    }

private:
    [[nodiscard]] PanelForm& panel() { return program_.panels().touch("zt72518"); }
    void choose(std::string_view page) {
        for (int tab = 1; !panel().shows(page); ++tab)
            panel().outerTabs.click(tab);
    }

    static void shoot(gui::MainWindow& window, QWidget& part, const QString& name) {
        window.binder().flush();
        QApplication::processEvents();
        part.grab().save(name + ".png");
    }

    void fillBatch() {
        MainForm& form = program_.mainForm();
        for (const auto& [name, word] :
             {std::pair("Wake", "A5"), std::pair("Read status", "03"), std::pair("Sleep", "3C")}) {
            form.singleWord.txtHexWordToSend.edit(word);
            form.commands.cmbMasterQCList.edit(name);
            form.quickCommands.cmdSaveQC.click();
        }
        for (const char* line :
             {"Wake", "* Wait 2 s", "Read status", "* Set HIGH: D5", "* Pause", "Sleep"})
            form.commands.addToSend(line);
        form.commands.lstCommandsToSend.select(2);
        form.commands.lstCommandsAvailable.select(0);
    }

    VirtualClock clock_;
    VirtualBench bench_{clock_, makeDevice("echo")};
    ScriptedDesk desk_{clock_};
    Program program_{bench_.hardware(), desk_.desk()};
};

const State states[] = {
    {"hex-8", "8", true, {"A5", "3C", "7"}},
    {"hex-160", "160", true, {"123456789ABCDEF00FEDCBA987654321DEADBEEF", "FF"}},
    {"bits-8", "8", false, {"0", "7", "5"}},
    {"bits-16", "16", false, {"15", "3", "8"}},
    {"bits-40", "40", false, {"39", "20", "1"}},
};

/// All eight types on one sheet; `size` is that of a diagram.
void paintTypes(const QString& file, bool msbFirst, QSize size) {
    QWidget sheet;
    auto* grid = new QGridLayout(&sheet);
    for (int type = 1; type <= 8; ++type) {
        auto* box = new QGroupBox(QString("SPI type %1").arg(type), &sheet);
        auto* diagram = new gui::TypeDiagram(type, box);
        diagram->setType(type, {.msbFirst = msbFirst, .selectedWhenHigh = !msbFirst});
        diagram->setFixedSize(size.isEmpty() ? diagram->minimumSizeHint() : size);
        (new QVBoxLayout(box))->addWidget(diagram);
        grid->addWidget(box, (type - 1) % 4, (type - 1) / 4);
    }
    sheet.grab().save(file);
}

/// Pictures with source files of their own; true when nothing else is wanted.
bool paintScreens(std::string_view only, const QString& folder, const QString& tail) {
    struct Row {
        std::string_view name;
        const char* prefix;
        void (*paint)(const QString& prefix, const QString& tail);
    };
    constexpr std::array rows{Row{"adapter", "/adapter", gui::paintAdapter},
                              Row{"bytes", "", gui::paintBytePanels},
                              Row{"decoded", "/decoded", gui::paintDecoded},
                              Row{"notices", "/notice", gui::paintNotices},
                              Row{"waveform", "/waveform", gui::paintWaveforms},
                              Row{"zt72516", "/zt72516", gui::paintZt72516},
                              Row{"zt72517", "/zt72517", gui::paintZt72517}};
    bool isOne = false;
    for (const Row& row : rows) {
        isOne = isOne || only == row.name;
        if (only.empty() || only == row.name)
            row.paint(folder + row.prefix, tail);
    }
    return isOne;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QString folder = argc > 1 ? argv[1] : "screens";
    const QString scale = argc > 2 ? argv[2] : "100";
    const bool onlyChip = argc > 4 && std::string_view(argv[3]) == "chip";
    const bool onlyPanel = argc > 3 && std::string_view(argv[3]) == "panel";
    QDir().mkpath(folder);
    for (const bool dark : {false, true}) {
        gui::applyTheme(dark);
        const QString tail = QString("-%1-%2").arg(dark ? "dark" : "light", scale);
        const std::string_view only = argc > 3 ? argv[3] : "";
        if (paintScreens(only, folder, tail))
            continue;
        Stage panel;
        panel.plugDongle();
        if (onlyChip) {
            panel.paintDescribed(argv[4], folder + "/chip", tail);
            continue;
        }
        panel.paintPanel(folder + "/panel", tail);
        if (onlyPanel)
            continue;
        paintTypes(folder + "/types-msb" + tail + ".png", true, {520, 190});
        paintTypes(folder + "/types-lsb-smallest" + tail + ".png", false, {});
        for (const State& state : states) {
            Stage stage;
            stage.bring(state);
            stage.paint(folder + "/main-" + state.name + tail + ".png", {}, &state);
        }
        Stage dongle;
        dongle.plugDongle();
        dongle.bring(states[0]);
        dongle.paint(folder + "/main-dongle" + tail + ".png", {}, &states[0]);
        dongle.paintDialog(folder + "/configure-dongle" + tail);
        dongle.showExtraPins();
        dongle.paint(folder + "/main-dongle-pins" + tail + ".png", {});
        dongle.paintChip(folder + "/main-chip" + tail + ".png", {});
        dongle.paintChip(folder + "/main-chip-search" + tail + ".png", QSize(640, 480), "rx");
        Stage batch;
        batch.bring(states[0]);
        batch.paintBatch(folder + "/batch", tail);
        Stage parts;
        parts.bring(states[0]);
        parts.paintPartTabs(folder + "/main-parts" + tail + ".png", {});
        parts.paintPartTabs(folder + "/main-parts-small" + tail + ".png", QSize(640, 480));
        parts.paintPartPages(folder + "/part", tail);
        parts.paintHelp(folder, tail);
        Stage first;
        first.paint(folder + "/main-start" + tail + ".png", {});
        first.bring(states[4]);
        first.paint(folder + "/main-small-screen" + tail + ".png", QSize(640, 480), &states[4]);
        first.paintDialog(folder + "/configure" + tail);
        first.showExtraPins();
        first.paint(folder + "/main-pins" + tail + ".png", {});
    }
    return 0;
}
