#include "program/main_form.h"

#include "platform/dongle_commands.h"
#include "platform/printable.h"
#include "transfer/dongle_frame.h"

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::int16_t batchTab = 2; ///< the last of the generic ones

/// Puts the dongle into test mode. A missing answer or dongle is no failure.
void enterTestMode(const Session& session, DongleLink& dongle) {
    if (!session.USBReady)
        return;
    UsbFrame frame = commandFrame(dongle::testMode);
    frame[2] = dongle::testModeKey;
    UsbFrame answer{};
    dongle.exchange(frame, answer, DongleLink::Wait::Quiet);
}

} // namespace

MainForm::MainForm(forms::FormSet& set, const Parts& parts)
    : Form(set, "frmMain", applicationTitle),
      labelMainTitle(*this, "labelMainTitle", "Generic Bitlux Forge"),
      lblConfigNag(*this, "lblConfigNag", "(Not Configured)"),
      itemOpenChip(*this, "itemOpenChip", "Open C&hip..."),
      itemRecordJournal(*this, "itemRecordJournal", "Record &Journal..."),
      itemPortOptions(*this, "itemPortOptions", "Edit &Configuration..."),
      itemUpdateDongle(*this, "itemUpdateDongle", "&Update Dongle Firmware..."),
      itemExit(*this, "itemExit", "E&xit"),
      itemHelpTopics(*this, "itemHelpTopics", "Help &Topics..."),
      itemAbout(*this, "itemAbout", "&About Bitlux Forge..."),
      Command1(*this, "Command1"),
      Text1(*this, "Text1"),
      Text2(*this, "Text2"),
      run(*this, parts.session, parts.desk.loop, parts.engine.failures()),
      commands(*this, parts.desk.boxes),
      continuousCount(parts.engine, run, parts.clock),
      log(*this, parts.session, parts.options, parts.desk),
      singleWord(*this, {.session = parts.session,
                         .engine = parts.engine,
                         .log = log,
                         .run = run,
                         .commands = commands,
                         .boxes = parts.desk.boxes}),
      emptied(parts.session),
      quickCommands(*this, {.session = parts.session,
                            .commands = commands,
                            .emptied = emptied,
                            .singleWord = singleWord,
                            .run = run,
                            .boxes = parts.desk.boxes}),
      editor(*this, commands, run),
      batches(
          *this,
          {.session = parts.session, .commands = commands, .run = run, .boxes = parts.desk.boxes}),
      extraPins(*this, {.session = parts.session,
                        .pins = parts.pins,
                        .engine = parts.engine,
                        .log = log,
                        .run = run,
                        .commands = commands,
                        .singleWord = singleWord,
                        .boxes = parts.desk.boxes}),
      multiple(*this, {.session = parts.session,
                       .engine = parts.engine,
                       .commands = commands,
                       .log = log,
                       .run = run,
                       .extraPins = extraPins,
                       .boxes = parts.desk.boxes,
                       .loop = parts.desk.loop,
                       .clock = parts.clock}),
      shape(*this,
            {.session = parts.session, .run = run, .pins = parts.pins, .engine = parts.engine}),
      tabs(*this, {.session = parts.session,
                   .run = run,
                   .shape = shape,
                   .labelMainTitle = labelMainTitle,
                   .library = parts.library}),
      pspi(*this, {.session = parts.session,
                   .dongle = parts.dongle,
                   .boxes = parts.desk.boxes,
                   .loop = parts.desk.loop,
                   .tabs = tabs.TabStripMain,
                   .selectedPart = [this] { return tabs.selectedPart(); }}),
      files(*this, {.session = parts.session,
                    .commands = commands,
                    .emptied = emptied,
                    .batches = batches,
                    .log = log,
                    .run = run,
                    .desk = parts.desk}),
      notices(*this),
      unsaved(*this, {.session = parts.session, .run = run, .commands = commands, .files = files}) {
    run.sendSingle = [this] { singleWord.DoSPISingle(); };
    run.sendMultiple = [this] {
        multiple.DoSPIMultiple();
        return commands.lstCommandsToSend.count() > 0;
    };
    run.hasCommands = [this] { return commands.hasCommands(); };
    files.tabs = {.reset = [this] { tabs.ResetTabs(); },
                  .isActive = [this](std::int32_t part) { return tabs.IsTabActive(part); },
                  .add = [this](std::int32_t part) { tabs.addPartTab(part); },
                  .resetChips = [this] { tabs.disableChips(); },
                  .addChip = [this](const std::string& name) { return tabs.enableChip(name); },
                  .typeToSave = [this] { return shape.typeToSave(); }};
    log.stopContinuous = [this] { run.cmdStopContinuous_Click(); };
    Command1.hide();
    parts.engine.wordLeaving.subscribe([this] {
        Text1.hide();
        Text2.hide();
    });
    registerProcedures(parts);
    addNotices(parts);
}

void MainForm::addNotices(const Parts& parts) {
    multiple.wordMissing.subscribe([this](const std::string& name) { missingWord_ = name; });
    parts.engine.wordStarting.subscribe([this] { missingWord_.reset(); });
    multiple.pinMissing.subscribe(
        [this](std::size_t line, const std::string& name) { missingPins_.emplace(line, name); });
    multiple.progressChanged.subscribe([this] { noteRunProgress(); });
    files.fileUsed.subscribe([this] {
        missingWord_.reset();
        missingPins_.clear();
    });
    const Session& session = parts.session;
    notices.add([parts] { return goneNotice(parts); });
    notices.add([this, &session] { return missingWordNotice(session); });
    notices.add([this, &session] { return missingPinNotice(session); });
    notices.add([this] { return unsaved.notice(); });
    notices.add([this, &session] { return shapeNotice(session); });
    notices.add([this] { return emptiedNotice(); });
    notices.add([this] { return logFileNotice(); });
}

std::optional<Notice> MainForm::goneNotice(const Parts& parts) {
    if (!parts.engine.usesDongle() || parts.dongle.isPresent())
        return {};
    return Notice{.text = "Dongle gone: plug it in, the next send looks for it"};
}

std::optional<Notice> MainForm::missingWordNotice(const Session& session) {
    constexpr std::size_t longestName = 40;
    if (session.ActiveMainTab != batchTab)
        missingWord_.reset();
    if (!missingWord_ || session.QuickCommandTable.lastRowNamed(*missingWord_))
        return {};
    const std::string name = printable(*missingWord_, longestName);
    if (!emptied.has(*missingWord_))
        return Notice{.text = fmt::format("There is no Quick Command \"{}\"", name)};
    return Notice{.text = fmt::format("\"{}\" has no word: Apply emptied it", name),
                  .button = "Restore",
                  .procedure = "RestoreQuickCommands"};
}

void MainForm::noteRunProgress() {
    const std::optional<RunProgress>& now = multiple.progress();
    if (!now || now->line != 0 || now->pass > 1)
        return;
    missingWord_.reset(); // those of another run
    missingPins_.clear();
}

std::optional<Notice> MainForm::missingPinNotice(const Session& session) {
    constexpr std::size_t longestName = 40;
    if (session.ActiveMainTab != batchTab)
        missingPins_.clear();
    std::erase_if(missingPins_, [this](const auto& pin) { return extraPins.has(pin.second); });
    if (missingPins_.empty())
        return {};
    const auto& [line, name] = *missingPins_.begin();
    std::string text = fmt::format("Line {}: there is no extra pin \"{}\"", line + 1,
                                   printable(name, longestName));
    if (const std::size_t more = missingPins_.size() - 1; more > 0)
        text += fmt::format(", nor those of {} more line{}", more, more == 1 ? "" : "s");
    return Notice{.text = text};
}

std::optional<Notice> MainForm::shapeNotice(const Session& session) const {
    if (session.ActiveMainTab > batchTab || shape.isInForce())
        return {};
    return Notice{
        .text = shape.inForceText(), .button = shape.backText(), .procedure = "BackToAppliedWord"};
}

std::optional<Notice> MainForm::emptiedNotice() const {
    const std::size_t count = emptied.count();
    if (count == 0)
        return {};
    return Notice{.text = count == 1
                              ? "Apply emptied the word of 1 Quick Command"
                              : fmt::format("Apply emptied the words of {} Quick Commands", count),
                  .button = "Restore",
                  .procedure = "RestoreQuickCommands"};
}

std::optional<Notice> MainForm::logFileNotice() const {
    constexpr std::size_t longestText = 120;
    if (!log.file.failure().empty())
        return Notice{.text =
                          "The log file ended early: " + printable(log.file.failure(), longestText),
                      .button = "Log to File...",
                      .procedure = "itemLogToFile_Click"};
    if (!log.file.isOn())
        return {};
    return Notice{.text = "Logging to " + printable(log.file.fileName(), longestText),
                  .button = "Stop Logging",
                  .procedure = "itemLogToFile_Click"};
}

void MainForm::registerProcedures(const Parts& parts) {
    procedure("SendSPI", [&engine = parts.engine] { engine.SendSPI(); });
    procedure("read_rstint", [&dongle = parts.dongle] { dongle.read_rstint(); });
    procedure("test_mode", [parts] { enterTestMode(parts.session, parts.dongle); });
    procedure("Command1_Click", [this, &dongle = parts.dongle] {
        dongle.setUpPipes();
        Command1.hide();
        Command1.disable();
    });
    procedure("ToggleDataPort", [&pins = parts.pins] { pins.ToggleDataPort(); });
    procedure("ToggleControlPort", [&pins = parts.pins] { pins.ToggleControlPort(); });
}

} // namespace bitlux
