#include "program/program.h"

#include "panels/zt72361/watchdog.h"
#include "panels/zt72516/watchdog.h"
#include "panels/zt72518/watchdog.h"
#include "panels/zt72537/watchdog.h"
#include "platform/failure.h"
#include "platform/scoped_value.h"

#include <filesystem>
#include <optional>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::int32_t pspiPart = 72517;

} // namespace

Program::Program(const Hardware& hardware, const Desk& desk)
    : boxes_(desk.boxes),
      desk_{.boxes = boxes_,
            .fileDialogs = desk.fileDialogs,
            .pointer = desk.pointer,
            .loop = desk.loop,
            .systemInformation = desk.systemInformation,
            .sound = desk.sound},
      clock_(hardware.clock),
      markers_(hardware.markers != nullptr ? *hardware.markers : userMarkers_),
      forms_(desk_.boxes),
      pins_(session_, hardware.port),
      adapters_(session_, pins_, hardware.adapters),
      failures_(desk_.boxes),
      dongle_(session_, hardware.usb, hardware.clock, failures_),
      engine_({.session = session_,
               .options = options_,
               .pins = pins_,
               .dongle = dongle_,
               .failures = failures_}),
      tap_(pins_, dongle_, hardware.clock),
      waveform_({.session = session_,
                 .engine = engine_,
                 .dongle = dongle_,
                 .tap = tap_,
                 .clock = hardware.clock,
                 .forms = forms_,
                 .desk = desk_}),
      mainForm_(
          forms_, "frmMain",
          [this] {
              return std::make_unique<MainForm>(forms_, MainForm::Parts{.session = session_,
                                                                        .options = options_,
                                                                        .pins = pins_,
                                                                        .engine = engine_,
                                                                        .dongle = dongle_,
                                                                        .desk = desk_,
                                                                        .clock = clock_,
                                                                        .library = library_});
          },
          [this](MainForm& form) { registerProcedures(form); }),
      journal_({.session = session_,
                .engine = engine_,
                .dongle = dongle_,
                .pins = pins_,
                .boxes = boxes_,
                .tap = tap_,
                .clock = hardware.clock,
                .fileDialogs = desk_.fileDialogs,
                .mainForm = [this]() -> MainForm& { return *mainForm_; }}),
      dialog_(forms_, "frmConfigureSPI",
              [this] {
                  MainForm& form = *mainForm_;
                  return std::make_unique<ConfigureDialog>(
                      forms_,
                      ConfigureDialog::Parts{
                          .session = session_,
                          .pins = pins_,
                          .adapterBus = adapters_,
                          .boxes = desk_.boxes,
                          .singleWord = form.singleWord,
                          .log = form.log,
                          .commands = form.commands,
                          .emptied = form.emptied,
                          .extraPins = form.extraPins,
                          .labelMainTitle = form.labelMainTitle,
                          .lblConfigNag = form.lblConfigNag,
                          .startUsb = [this] { Start_USB(); },
                          .resetTabs =
                              [this, &form] { // the last step of Apply
                                  form.tabs.ResetTabs();
                                  panels_.keepShape();
                              },
                          .addPartTab = [&form](std::int32_t part) { form.tabs.addPartTab(part); },
                          .hasPartTab =
                              [&form](std::int32_t part) { return form.tabs.IsTabActive(part); }});
              }),
      saveBatch_(forms_, "frmSaveBatch",
                 [this] {
                     return std::make_unique<SaveBatchForm>(forms_, mainForm_->batches,
                                                            desk_.boxes);
                 }),
      addWait_(forms_, "frmAddWait",
               [this] {
                   return std::make_unique<AddWaitForm>(forms_, mainForm_->commands, desk_.boxes);
               }),
      about_(forms_, "frmAbout",
             [this] {
                 return std::make_unique<AboutForm>(forms_, session_.BuildNumber,
                                                    desk_.systemInformation);
             }),
      panels_(forms_,
              {.session = session_,
               .engine = engine_,
               .dongle = dongle_,
               .desk = desk_,
               .markers = markers_,
               .clock = clock_,
               .showType = [this] { showType(); }},
              library_),
      decoded_(engine_,
               {.library = library_,
                .forms = forms_,
                .tabs = [this]() -> const MainTabs& { return mainForm_->tabs; }},
               desk_) {
    forms_.unloadThrough("frmMain", [this] { close(); });
    options_.useUsb = [this] { return dialog_->ChkSerialPort.checked(); };
    options_.logForever = [this] { return dialog_->optLogForever.value(); };
    for (Event<>* failed : {&engine_.sendFailed, &dongle_.failed})
        failed->subscribe([this] { mainForm_->run.cmdStopContinuous_Click(); });
}

Program::~Program() {
    end();
}

void Program::Main(const std::string& commandLine) {
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
    openFromCommandLine(commandLine);
}

void Program::openFromCommandLine(const std::string& commandLine) {
    if (commandLine.empty())
        return;
    if (!ValidFile(commandLine)) {
        desk_.boxes.show(
            {.text = "Invalid configuration file name specified on the command line."});
        return;
    }
    session_.CommandLine = commandLine;
    session_.OpenFromCommandLine = true;
    forms_.perform("frmMain.itemOpen.Click", [this] { mainForm_->files.itemOpen_Click(); });
}

void Program::open(const std::string& fileName) {
    forms_.perform("frmMain.itemOpen.Click", [&] {
        if (!ValidFile(fileName))
            throw Failure(Failure::Kind::File, fmt::format("There is no file {}", fileName));
        mainForm_->files.open(fileName);
    });
}

void Program::openRecovered(const RecoveredFile& file) {
    forms_.perform("frmMain.itemOpen.Click", [&] { mainForm_->unsaved.open(file); });
}

void Program::openChip(const std::string& fileName) {
    forms_.perform("frmMain.itemOpenChip.Click", [&] { keepChip(fileName); });
}

void Program::itemOpenChip_Click() {
    const std::optional<std::string> fileName =
        desk_.fileDialogs.ask({.kind = FileDialog::Kind::Open,
                               .title = "Open Chip",
                               .filter = "Chips (*.toml)|*.toml",
                               .fileName = {}});
    if (fileName)
        keepChip(*fileName);
}

void Program::keepChip(const std::string& fileName) {
    using Outcome = chips::ChipLibrary::Kept::Outcome;
    chips::ChipLibrary::Kept kept = library_.keep(fileName);
    if (kept.outcome == Outcome::Exists) {
        const MessageBox question{.text =
                                      fmt::format("There is another chip \"{}\" in {}. Replace it?",
                                                  kept.name, kept.file),
                                  .title = "Open Chip",
                                  .buttons = MessageBox::Buttons::YesNo};
        if (desk_.boxes.show(question) != MessageBox::Answer::Yes)
            return;
        kept = library_.keep(fileName, true);
    }
    if (kept.outcome == Outcome::Refused)
        throw Failure(Failure::Kind::File, chips::describe(kept.problems, fileName));
    mainForm_->tabs.AddChipTab(kept.name);
    mainForm_->tabs.selectChipTab(kept.name);
}

bool Program::ValidFile(const std::string& name) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(name, error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

void Program::putIdleLevelsOnPins() {
    // The clock is set low here for any type; Apply has its own idle levels.
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
    form.files.dialog = [this]() -> ConfigureDialog& { return *dialog_; };
    form.shape.holdingPanel = [this] { return panels_.holding(); };
    form.shape.showType = [this] { showType(); };
    form.procedure("itemHelpTopics_Click", [this] { helpRequested.raise(); });
    form.procedure("itemAbout_Click", [this] { about_->setVisible(true); });
    form.procedure("itemExit_Click", [this] { itemExit_Click(); });
    form.procedure("Form_QueryUnload", [&form] { form.run.cmdStopContinuous_Click(); });
    form.procedure("Form_Unload", [this] { Form_Unload(); });
    form.log.cleared.subscribe([this] { engine_.restartWords(); });
    form.batches.showSaveBatch = [this] { saveBatch_->setVisible(true); };
    form.editor.showAddWait = [this] { addWait_->setVisible(true); };
    form.tabs.startUsb = [this] { Start_USB(); };
    form.tabs.showPanel = [this](std::int32_t part) { showPanel(part); };
    form.tabs.showUserPanel = [this](const std::string& chip) { panels_.showUsers(chip); };
    form.procedure("itemOpenChip_Click", [this] { itemOpenChip_Click(); });
    form.procedure("itemRecordJournal_Click", [this] { journal_.itemRecordJournal_Click(); });
    form.notices.add([this] { return journal_.notice(); });
    form.procedure("itemUpdateDongle_Click", [this] { itemUpdateDongle_Click(); });
    form.procedure("Start_USB", [this] { Start_USB(); });
    form.procedure("send_wd", [this] { zt72518Watchdog().send_wd(); });
    form.procedure("send_wd_current", [this] { zt72518Watchdog().send_wd_current(); });
    form.procedure("Send72516WatchdogCmd", [this] {
        zt72516::Send72516WatchdogCmd(
            session_, dongle_, forms_, [this]() -> auto& {
                return panels_.touch("zt72516").part<zt72516::Watchdog>();
            });
    });
    form.procedure("send_wd_537", [this](int state) {
        panels_.touch("zt72537").part<zt72537::Watchdog>().send_wd_537(state);
    });
    form.procedure("send_wd_361", [this](int state) {
        panels_.touch("zt72361").part<zt72361::Watchdog>().send_wd_361(state);
    });
    form.procedure("send_trimming", [this] { panels_.zt72518TestMode().send_trimming(); });
}

zt72518::Watchdog& Program::zt72518Watchdog() {
    return panels_.touch("zt72518").part<zt72518::Watchdog>();
}

void Program::showPanel(std::int32_t part) {
    if (part != pspiPart) // its page is its panel
        panels_.show(fmt::format("zt{}", part));
}

void Program::showType() {
    TypePage& types = dialog_->types;
    types.TabStripSPItype.setSelected(session_.SPIType);
    types.TabStripSPItype_Click();
}

void Program::loadMainForm(MainForm& form) {
    session_.QuickCommandTable.recreate(session_.SPIWordLength);
    session_.ActiveMainTab = 1;
    session_.LogPinsTab = 1;
    session_.LogPinsNowTab = 1;
    session_.DisplayHex = 0;
    session_.LinkFailed = false;
    session_.ZT72518PanelActive = 0;
    session_.ZT72516PanelActive = 0;
    session_.ZT72361PanelActive = 0;
    session_.ZT72537PanelActive = 0;
    form.singleWord.showBitColumns();
    // The dongle is tried first, at every start.
    dialog_->ChkSerialPort.setValue(1);
    dialog_->chkSerialPort_Click();
    form.lblConfigNag.hide();
    form.singleWord.AdjustSPILabels();
    form.tabs.removePartTabs();
}

void Program::Start_USB() {
    if (searching_) // the dialog's box, ticked because of what was found, asks for a search
        return;
    const ScopedValue searching(searching_, true);
    const DongleLink::Found found = dongle_.search();
    session_.USBReady = found == DongleLink::Found::Opened;
    if (session_.USBReady) {
        session_.LinkFailed = false; // that was another link
        forms::Button& setUp = mainForm_->Command1;
        setUp.show();
        setUp.enable();
        mainForm_->call("Command1_Click");
        setUp.disable();
    }
    dialog_->arrangeFor(found);
}

bool Program::canReachDongle() {
    if (engine_.usesDongle())
        return true;
    desk_.boxes.show({.text = session_.USBReady
                                  ? "The parallel port is in use.  Choose the dongle in the "
                                    "configuration to set firmware update mode."
                                  : "There is no USB connection to a working dongle.  "
                                    "Firmware update mode cannot be set."});
    return false;
}

void Program::itemUpdateDongle_Click() {
    if (!canReachDongle())
        return;
    const MessageBox question{
        .text = "Are you sure you want to set the dongle to firmware update mode?  "
                "This operation cannot be undone.",
        .buttons = MessageBox::Buttons::YesNo,
        .preset = MessageBox::Answer::No};
    // Things may have changed under the question.
    if (desk_.boxes.show(question) != MessageBox::Answer::Yes || !canReachDongle())
        return;
    {
        // A later word must not contain it, even when this one fails.
        const ScopedValue request(session_.FirmwareUpdateRequest, true);
        session_.WordToSend.assign(static_cast<std::size_t>(session_.SPIWordLength), 0);
        engine_.SendSPI();
    }
    if (!session_.WordAnswered)
        return;
    desk_.boxes.show({.text = fmt::format("Dongle firmware update mode has been set.{0}"
                                          "Use the DLK Device Manager application to{0}"
                                          "update the dongle firmware.",
                                          lineBreak)});
}

void Program::startRecording(WireListener& trace) {
    stopRecording();
    trace_ = &trace;
    tap_.join(trace);
}

void Program::stopRecording() {
    if (trace_ != nullptr)
        tap_.leave(*trace_);
    trace_ = nullptr;
}

} // namespace bitlux
