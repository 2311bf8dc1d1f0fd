#include "program/main_form.h"

namespace bitlux {

namespace {

std::vector<forms::TabStrip::Tab> tabsOfAllParts() {
    return {{"Send &One Command at a Time", "Use this tab to send SPI messages one at a time"},
            {"Send a &Batch of Commands",
             "Use this tab to send a batch of SPI messages with one click"},
            {"ZT72517", "Use this tab to send PSPI for 72517"},
            {"SBC ZT7251x Family", "ZT72514 - 511 - 518 control"},
            {"ZT72361", "ZT72361 Control"},
            {"ZT72537 - SBC LIN 2.5G", "ZT72537 - SBC LIN 2.5G control"},
            {"ZT72516", "ZT72516 control"}};
}

} // namespace

MainForm::MainForm(forms::FormSet& set, const Parts& parts)
    : Form(set, "frmMain", applicationTitle),
      labelMainTitle(*this, "labelMainTitle", "Generic Bitlux Forge"),
      lblConfigNag(*this, "lblConfigNag", "(Not Configured)"),
      TabStripMain(*this, "TabStripMain", tabsOfAllParts()),
      itemPortOptions(*this, "itemPortOptions", "Edit &Configuration..."),
      itemUpdateDongle(*this, "itemUpdateDongle", "&Update Dongle Firmware..."),
      itemExit(*this, "itemExit", "E&xit"),
      Command1(*this, "Command1"),
      Text1(*this, "Text1"),
      Text2(*this, "Text2"),
      run(*this, parts.session, parts.desk.loop),
      commands(*this, parts.desk.boxes),
      log(*this, parts.session, parts.options, parts.desk),
      singleWord(*this, {.session = parts.session,
                         .engine = parts.engine,
                         .log = log,
                         .run = run,
                         .commands = commands,
                         .boxes = parts.desk.boxes}) {
    run.sendSingle = [this] { singleWord.DoSPISingle(); };
    run.hasCommands = [this] { return commands.hasCommands(); };
    log.stopContinuous = [this] { run.cmdStopContinuous_Click(); };
    Command1.hide();
    parts.engine.wordLeaving.subscribe([this] {
        Text1.hide();
        Text2.hide();
    });
    registerProcedures(parts);
}

void MainForm::registerProcedures(const Parts& parts) {
    procedure("SendSPI", [&engine = parts.engine] { engine.SendSPI(); });
    procedure("read_rstint", [&dongle = parts.dongle] { dongle.read_rstint(); });
    procedure("test_mode", [&dongle = parts.dongle] { dongle.test_mode(); });
    procedure("Command1_Click", [this, &dongle = parts.dongle] {
        dongle.setUpPipes();
        Command1.hide();
        Command1.disable();
    });
    procedure("ToggleDataPort", [&pins = parts.pins] { pins.ToggleDataPort(); });
    procedure("ToggleControlPort", [&pins = parts.pins] { pins.ToggleControlPort(); });
}

} // namespace bitlux
