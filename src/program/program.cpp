#include "program/program.h"

#include <exception>

namespace bitlux {

namespace {

void removePartTabs(MainForm& form) {
    constexpr int genericTabs = 2;
    while (form.TabStripMain.count() > genericTabs)
        form.TabStripMain.removeTab(form.TabStripMain.count());
}

} // namespace

Program::Program(const Platform& platform)
    : forms_(platform.boxes),
      pins_(session_, platform.port),
      engine_(session_, pins_, platform.boxes),
      mainForm_(
          forms_, "frmMain",
          [this, platform] {
              return std::make_unique<MainForm>(
                  forms_, MainForm::Parts{.session = session_,
                                          .options = options_,
                                          .pins = pins_,
                                          .engine = engine_,
                                          .desk = {.boxes = platform.boxes,
                                                   .fileDialogs = platform.fileDialogs,
                                                   .pointer = platform.pointer},
                                          .loop = platform.loop});
          },
          [this](MainForm& form) {
              registerProcedures(form);
              form.call("Form_Load");
          }),
      dialog_(
          forms_, "frmConfigureSPI",
          [this, &boxes = platform.boxes] {
              MainForm& form = *mainForm_;
              return std::make_unique<ConfigureDialog>(
                  forms_, ConfigureDialog::Parts{.session = session_,
                                                 .pins = pins_,
                                                 .boxes = boxes,
                                                 .singleWord = form.singleWord,
                                                 .log = form.log,
                                                 .commands = form.commands,
                                                 .labelMainTitle = form.labelMainTitle,
                                                 .lblConfigNag = form.lblConfigNag,
                                                 .startUsb = [this] { Start_USB(); }});
          },
          [](ConfigureDialog& dialog) { dialog.call("Form_Load"); }) {
    options_.logForever = [this] { return dialog_->optLogForever.value(); };
    engine_.sendFailed.subscribe([this] { mainForm_->run.cmdStopContinuous_Click(); });
}

Program::~Program() {
    end();
}

void Program::Main() {
    session_ = Session{};
    session_.SingleWordBits.assign(static_cast<std::size_t>(session_.SPIWordLength) + 1, 0);
    session_.StartingUp = ConstOn;
    mainForm_->setVisible(false);
    dialog_->setVisible(false);
    dialog_->SetDefaults();
    dialog_->cmdApply_Click();
    session_.StartingUp = ConstOff;
    mainForm_->singleWord.AdjustSPILabels();
    if (session_.ParallelPortReady)
        putIdleLevelsOnPins();
    mainForm_->setVisible(true);
    running_ = true;
}

void Program::putIdleLevelsOnPins() {
    // The clock goes low here whatever the type; Apply has its own idle levels.
    session_.DataPortPins.setLevel(session_.CSPin, session_.CSIdleLevel);
    session_.DataPortPins.setLevel(session_.ClockPin, session_.ClockLowLevel);
    session_.DataPortPins.setLevel(session_.DIPin, session_.DIZeroLevel);
    pins_.ToggleDataPort();
    pins_.ToggleControlPort();
}

void Program::registerProcedures(MainForm& form) {
    form.procedure("Form_Load", [this, &form] { loadMainForm(form); });
    form.procedure("itemPortOptions_Click", [this, &form] {
        form.run.cmdStopContinuous_Click();
        dialog_->setVisible(true);
    });
    form.procedure("itemExit_Click", [this, &form] {
        form.run.cmdStopContinuous_Click();
        exitRequested.raise();
    });
    form.procedure("Start_USB", [this] { Start_USB(); });
}

void Program::loadMainForm(MainForm& form) {
    session_.QuickCommandTable.clear();
    session_.ActiveMainTab = 1;
    session_.LogPinsTab = 1;
    session_.LogPinsNowTab = 1;
    session_.DisplayHex = 0;
    session_.LinkFailed = false;
    form.singleWord.showBitColumns();
    // The dongle is tried first, at every start.
    dialog_->ChkSerialPort.setValue(1);
    dialog_->chkSerialPort_Click();
    form.lblConfigNag.hide();
    form.singleWord.AdjustSPILabels();
    removePartTabs(form);
}

void Program::Start_USB() {
    // Nothing in the house speaks USB, so no dongle answers.
    session_.USBReady = false;
    dialog_->arrangeWithoutDongle();
}

void Program::end() {
    if (!running_)
        return;
    running_ = false;
    mainForm_->run.cmdStopContinuous_Click();
    if (!session_.ParallelPortReady || session_.LPTPortAddress == 0)
        return;
    try {
        pins_.rest();
    } catch (const std::exception&) { // a port that is gone needs no idle levels
        session_.ParallelPortReady = false;
    }
}

} // namespace bitlux
