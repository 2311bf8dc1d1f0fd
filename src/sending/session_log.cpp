#include "sending/session_log.h"

#include "platform/failure.h"
#include "platform/text_file.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

WordDisplay displayOf(const Session& session) {
    switch (session.DisplayHex) {
    case 0:
        return WordDisplay::Binary;
    case 1:
        return WordDisplay::Hex;
    default:
        return WordDisplay::None;
    }
}

WordBits wordOf(const std::vector<std::int16_t>& bits, std::int16_t length) {
    const auto wanted = static_cast<std::size_t>(length);
    if (bits.size() < wanted)
        throw Failure(Failure::Kind::OutOfRange, "Subscript out of range: the word is too short");
    return WordBits(bits).first(wanted);
}

forms::ControlArray<forms::Frame> logAndPins(forms::Form& form, const std::string& name) {
    constexpr int pins = 2;
    forms::ControlArray<forms::Frame> frames(
        name, 1, pins, [&form](const std::string& arrayName, int index) {
            return std::make_unique<forms::Frame>(
                form, arrayName, index == pins ? "Extra Pins" : "Session Log", index);
        });
    frames(pins).hide();
    return frames;
}

} // namespace

SessionLog::SessionLog(forms::Form& form, Session& session, const LiveOptions& options,
                       const Desk& desk)
    : session_(session),
      options_(options),
      desk_(desk),
      frameLogPinsNow(logAndPins(form, "frameLogPinsNow")),
      frameLogPins(logAndPins(form, "frameLogPins")),
      lstSessionLogSingle(form, "lstSessionLogSingle", lines_),
      lstSessionLogMult(form, "lstSessionLogMult", lines_),
      cmdSaveLogSingle(form, "cmdSaveLogSingle", "Save &Log"),
      cmdClearLogSingle(form, "cmdClearLogSingle", "Cl&ear Log"),
      cmdSaveLogMult(form, "cmdSaveLogMult", "Save &Log"),
      cmdClearLogMult(form, "cmdClearLogMult", "Cl&ear Log"),
      itemSaveLog(form, "itemSaveLog", "Save Session &Log"),
      itemSaveLogAs(form, "itemSaveLogAs", "Save Session Log As..."),
      itemClearLog(form, "itemClearLog", "&Clear Session Log"),
      file(form, desk) {
    form.procedure("UpdateLog", [this] { UpdateLog(); });
    for (const char* name :
         {"cmdClearLogSingle_Click", "cmdClearLogMult_Click", "itemClearLog_Click"})
        form.procedure(name, [this] { cmdClearLogSingle_Click(); });
    for (const char* name : {"cmdSaveLogSingle_Click", "cmdSaveLogMult_Click", "itemSaveLog_Click"})
        form.procedure(name, [this] { cmdSaveLogSingle_Click(); });
    form.procedure("itemSaveLogAs_Click", [this] { itemSaveLogAs_Click(); });
}

void SessionLog::UpdateLog() {
    lines_->addWord(wordOf(session_.WordToSend, session_.SPIWordLength),
                    wordOf(session_.WordReceived, session_.SPIWordLength), displayOf(session_));
    moveToLastLine();
}

void SessionLog::logWord(bool continuous, PlaceInPass place) {
    if (!session_.WordAnswered)
        return;
    if (file.isOn())
        file.add(LogLines::textOf(wordOf(session_.WordToSend, session_.SPIWordLength),
                                  wordOf(session_.WordReceived, session_.SPIWordLength),
                                  displayOf(session_)));
    if (session_.SessionLogEnabled != ConstOn)
        return;
    if (!continuous) {
        UpdateLog();
        return;
    }
    if (session_.ContinuousLogEnabled != ConstOn && session_.ContinuousLogCount == 1 && place.first)
        addNote("Continuous Send Log Disabled");
    if (!takesContinuous())
        return;
    UpdateLog();
    if (!options_.logForever() && session_.ContinuousLogCount == session_.ContinuousLogLimit &&
        place.last)
        addNote("Continuous Send Log Suspended");
}

void SessionLog::logLine(const std::string& text, bool continuous) {
    if (file.isOn())
        file.add(std::initializer_list<std::string_view>{text});
    if (!takesText(continuous))
        return;
    lines_->addText(text);
    moveToLastLine();
}

void SessionLog::logNote(const std::string& text, bool continuous) {
    if (file.isOn())
        file.add(std::initializer_list<std::string_view>{text, " "});
    if (takesText(continuous))
        addNote(text);
}

bool SessionLog::takesText(bool continuous) const {
    return session_.SessionLogEnabled == ConstOn && (!continuous || takesContinuous());
}

bool SessionLog::takesContinuous() const {
    return session_.ContinuousLogEnabled == ConstOn &&
           (session_.ContinuousLogCount <= session_.ContinuousLogLimit || options_.logForever());
}

bool SessionLog::full() const {
    return session_.SessionLogEnabled == ConstOn && !file.isWanted() &&
           lines_->size() >= static_cast<std::size_t>(session_.SessionLogCapacity);
}

void SessionLog::clear() {
    lines_->clear();
    linesChanged();
    cleared.raise();
}

void SessionLog::cmdClearLogSingle_Click() {
    stopContinuous();
    clear();
    session_.SessionLogCount = 0;
}

void SessionLog::cmdSaveLogSingle_Click() {
    stopContinuous();
    saveAs(session_.LogFileName.empty() ? askFileName() : session_.LogFileName);
}

void SessionLog::itemSaveLogAs_Click() {
    const std::optional<std::string> name = askFileName();
    if (!name)
        return;
    const std::string before = std::exchange(session_.LogFileName, *name);
    try {
        cmdSaveLogSingle_Click();
    } catch (...) {
        session_.LogFileName = before;
        throw;
    }
}

void SessionLog::saveAs(const std::optional<std::string>& fileName) {
    if (fileName.value_or("").empty()) {
        desk_.boxes.show({.text = "No filename selected.  Cannot Save.", .reportsCancel = true});
        return;
    }
    write(*fileName);
    session_.LogFileName = *fileName;
}

std::optional<std::string> SessionLog::askFileName() {
    return desk_.fileDialogs.ask({.kind = FileDialog::Kind::Save,
                                  .title = "Save Session Log",
                                  .filter = "Text Files (*.txt)|*.txt|All Files (*.*)|*.*",
                                  .fileName = session_.LogFileName});
}

void SessionLog::write(const std::string& fileName) {
    const Hourglass hourglass(desk_.pointer);
    replaceTextFile(fileName, [this](const auto& writeLine) {
        for (std::size_t i = 0; i < lines_->size(); ++i)
            writeLine(lines_->line(i));
    });
}

void SessionLog::setEnabled(bool enabled) {
    for (const auto* frames : {&frameLogPinsNow, &frameLogPins})
        (*frames)(1).setEnabled(enabled);
    for (forms::Control* control : {static_cast<forms::Control*>(&lstSessionLogSingle),
                                    static_cast<forms::Control*>(&lstSessionLogMult),
                                    static_cast<forms::Control*>(&cmdSaveLogSingle),
                                    static_cast<forms::Control*>(&cmdClearLogSingle),
                                    static_cast<forms::Control*>(&cmdSaveLogMult),
                                    static_cast<forms::Control*>(&cmdClearLogMult)})
        control->setEnabled(enabled);
}

void SessionLog::addNote(const std::string& text) {
    lines_->addText(text);
    lines_->addText(" ");
    moveToLastLine();
}

void SessionLog::linesChanged() {
    lstSessionLogSingle.linesChanged();
    lstSessionLogMult.linesChanged();
}

void SessionLog::makeRoom() {
    constexpr std::size_t longestEntry = 5; // further lines of one word
    const auto capacity = static_cast<std::size_t>(std::max<int>(session_.SessionLogCapacity, 0));
    if (file.isWanted())
        lines_->keepLast(capacity > longestEntry ? capacity - longestEntry : 0);
}

void SessionLog::moveToLastLine() {
    makeRoom();
    linesChanged();
    const int last = static_cast<int>(lines_->size()) - 1;
    lstSessionLogSingle.setListIndex(last);
    lstSessionLogMult.setListIndex(last);
}

} // namespace bitlux
