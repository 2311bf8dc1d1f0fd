#include "gui/screens/byte_panel_screens.h"

#include "bench/scripted_desk.h"
#include "gui/screens/form_picture.h"
#include "gui/window/main_window.h"
#include "workbench/virtual_bench.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bitlux::gui {

namespace {

constexpr QSize smallScreen(1024, 600);

/// A chip with its panel, the switches that are turned on, and the buttons that are pressed.
class BytePanelStage {
public:
    BytePanelStage(std::string chip, std::string form, const std::vector<const char*>& on)
        : chip_(std::move(chip)),
          form_(std::move(form)),
          bench_(clock_, makeDevice(chip_)),
          program_({.port = bench_.port, .usb = bench_.dongle, .clock = clock_}, desk_.desk()) {
        bench_.dongle.plug();
        for (const char* name : on)
            bench_.dongle.chip()->turn(switchNamed(*bench_.dongle.chip(), name), true);
        program_.Main();
        window_ = std::make_unique<MainWindow>(program_);
        program_.forms().show(form_);
        desk_.loop.drive(program_.forms());
    }

    /// Every page, the small ones at the end.
    void paintPages(const QString& folder, const QString& tail) {
        press("CmdReadAll");
        PanelForm& panel = program_.panels().touch(chip_);
        forms::TabStrip& pages = panel.registerTabs;
        for (const QSize size : {QSize(), smallScreen}) {
            for (int page = 1; page <= pages.count(); ++page) {
                pages.click(page);
                shoot(folder, "register-" + std::to_string(page), tail, size);
            }
            panel.outerTabs.click(2);
            shoot(folder, "sequence", tail, size);
            panel.outerTabs.click(1);
        }
        pages.click(1);
    }

    void press(const std::string& button) {
        program_.forms().get<forms::Button>(form_ + "." + button).click();
    }
    void choose(const std::string& option) {
        program_.forms().get<forms::OptionButton>(form_ + "." + option).click();
    }
    void move(const std::string& bar, int value) {
        program_.forms().get<forms::ScrollBar>(form_ + "." + bar).move(value);
    }
    void tick(const std::string& box) {
        program_.forms().get<forms::CheckBox>(form_ + "." + box).click();
    }

    void shoot(const QString& folder, const std::string& state, const QString& tail,
               QSize size = {}) {
        saveFormPicture(*window_, program_.forms().form(form_).caption(), size,
                        folder + "/" + QString::fromStdString(chip_) +
                            (size.isEmpty() ? "-" : "-small-") + QString::fromStdString(state) +
                            tail + ".png");
    }

private:
    const std::string chip_;
    const std::string form_;
    VirtualClock clock_;
    VirtualBench bench_;
    ScriptedDesk desk_{clock_};
    Program program_;
    std::unique_ptr<MainWindow> window_;
};

void paintZt72537(const QString& folder, const QString& tail) {
    BytePanelStage stage("zt72537", "ZT72537",
                         {"VSR/VSOV", "LSSR/LS1CL", "LSSR/LS1OP", "LSSR/LS2CL", "LSSR/LS2OP"});
    stage.move("wd_time", 40);
    stage.tick("wd_en(0)");
    stage.press("CmdLscr");
    stage.paintPages(folder, tail);
    stage.choose("OptMcr(1)");
    for (const QSize size : {QSize(), smallScreen}) {
        stage.press("CmdSelectWakeUp");
        stage.shoot(folder, "stop-1", tail, size);
        stage.press("CmdSelectWDClear");
        stage.shoot(folder, "stop-2", tail, size);
        stage.tick("wd_en(1)");
    }
    stage.press("Command7");
    stage.choose("zt7253x(2)");
    stage.shoot(folder, "variant", tail);
}

void paintZt72361(const QString& folder, const QString& tail) {
    BytePanelStage stage("zt72361", "ZT72361", {"TIM flags/CanL to gnd", "IOR flags/HS1OT"});
    stage.move("HscWd", 20);
    stage.choose("OptRead(1)");
    stage.paintPages(folder, tail);
    stage.choose("OptSbc(0)");
    stage.shoot(folder, "variant", tail);
}

} // namespace

void paintBytePanels(const QString& folder, const QString& tail) {
    paintZt72537(folder, tail);
    paintZt72361(folder, tail);
}

} // namespace bitlux::gui
