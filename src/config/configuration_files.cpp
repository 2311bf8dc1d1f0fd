#include "config/configuration_files.h"

#include "config/configuration_reader.h"
#include "config/configuration_writer.h"
#include "config/kept_file.h"
#include "platform/printable.h"
#include "platform/text_file.h"

#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

ConfigurationFiles::ConfigurationFiles(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      itemOpen(form, "itemOpen", "&Open Configuration..."),
      itemSave(form, "itemSave", "&Save Configuration"),
      itemSaveAs(form, "itemSaveAs", "Save Configuration &As...") {
    form.procedure("itemOpen_Click", [this] { itemOpen_Click(); });
    form.procedure("itemSave_Click", [this] { itemSave_Click(); });
    form.procedure("itemSaveAs_Click", [this] { itemSaveAs_Click(); });
}

void ConfigurationFiles::itemOpen_Click() {
    parts_.run.cmdStopContinuous_Click();
    session_.ConfigDirty = ConstOff;
    const bool named = std::exchange(session_.OpenFromCommandLine, false);
    const std::string name =
        named ? session_.CommandLine : ask(FileDialog::Kind::Open).value_or("");
    if (name.empty()) {
        say("No filename selected.  Nothing to open.");
        return;
    }
    read(name);
}

void ConfigurationFiles::open(const std::string& fileName) {
    parts_.run.cmdStopContinuous_Click();
    session_.ConfigDirty = ConstOff;
    read(fileName);
}

void ConfigurationFiles::read(const std::string& fileName) {
    session_.ConfigFileName = fileName;
    std::optional<std::vector<std::string>> missing;
    try {
        missing = play(fileName);
    } catch (...) { // what was read in part must not replace the whole
        session_.ConfigFileName.clear();
        throw;
    }
    if (!missing) {
        say("Invalid File Format.");
        return;
    }
    if (recoveredFrom_) {
        session_.ConfigFileName.clear();
        session_.ConfigDirty = ConstOn;
    }
    fileUsed.raise();
    tellMissing(*missing);
}

std::optional<std::vector<std::string>> ConfigurationFiles::play(const std::string& fileName) {
    ConfigurationReader reader({.session = session_,
                                .dialog = dialog(),
                                .commands = parts_.commands,
                                .emptied = parts_.emptied,
                                .batches = parts_.batches,
                                .log = parts_.log,
                                .tabs = tabs},
                               fileName);
    if (!reader.isConfiguration())
        return std::nullopt;
    replacing.raise();
    recoveredFrom_.reset();
    const Hourglass hourglass(parts_.desk.pointer);
    // Settings of the previous file are cleared; those that the user ticked and did not save
    // remain.
    if (std::exchange(fileHasDonglePins_, false))
        dialog().extraPins.clearDonglePins();
    reader.read();
    fileHasDonglePins_ = reader.hasDonglePins();
    recoveredFrom_ = reader.recoveredFrom();
    return reader.missingChips();
}

void ConfigurationFiles::itemSave_Click() {
    parts_.run.cmdStopContinuous_Click();
    saveAs(session_.ConfigFileName.empty() ? ask(FileDialog::Kind::Save) : session_.ConfigFileName);
}

void ConfigurationFiles::itemSaveAs_Click() {
    const std::optional<std::string> name = ask(FileDialog::Kind::Save);
    if (!name)
        return;
    const std::string before = std::exchange(session_.ConfigFileName, *name);
    try {
        itemSave_Click();
    } catch (...) {
        session_.ConfigFileName = before;
        throw;
    }
}

void ConfigurationFiles::saveAs(const std::optional<std::string>& fileName) {
    if (!fileName)
        return;
    if (fileName->empty()) {
        say("No filename selected.  Cannot Save.");
        return;
    }
    const std::string note = write(*fileName);
    session_.ConfigFileName = *fileName;
    session_.ConfigDirty = ConstOff;
    recoveredFrom_.reset();
    fileUsed.raise();
    if (!note.empty())
        say(note);
}

std::string ConfigurationFiles::write(const std::string& fileName) {
    const Hourglass hourglass(parts_.desk.pointer);
    const std::string content = text();
    const std::size_t before = namedCommandsIn(fileName);
    const std::size_t now = namedCommands(session_.QuickCommandTable);
    std::string note;
    if (now < before)
        note = fmt::format("The file had {} Quick Commands and has {} now.{}"
                           "The old file is kept as \"{}\".",
                           before, now, lineBreak, keepOldFile(fileName));
    replaceFile(fileName, content);
    fileHasDonglePins_ = !dialog().extraPins.dongleNames().empty();
    return note;
}

std::string ConfigurationFiles::text() {
    std::vector<ConfigurationSetting> atTheEnd;
    if (!dialog().extraPins.dongleNames().empty())
        atTheEnd = donglePinSettings(dialog());
    return configurationText(configurationSettings(dialog(), session_, tabs), session_,
                             parts_.commands.toSend(), atTheEnd);
}

std::optional<std::string> ConfigurationFiles::ask(FileDialog::Kind kind) {
    return parts_.desk.fileDialogs.ask(
        {.kind = kind,
         .title = kind == FileDialog::Kind::Open ? "Open Configuration" : "Save Configuration",
         .filter = "SPI Config Files (*.spi)|*.spi|All Files (*.*)|*.*",
         .fileName = recoveredFrom_.value_or(session_.ConfigFileName)});
}

void ConfigurationFiles::tellMissing(const std::vector<std::string>& chips) {
    constexpr std::size_t longestText = 300;
    if (chips.empty())
        return;
    const std::string names = printable(fmt::format("{}", fmt::join(chips, ", ")), longestText);
    parts_.desk.boxes.show(
        {.text = fmt::format("The configuration has tabs of chips that have no file: {}.{}"
                             "They come back when it is opened with the files in their folder.",
                             names, lineBreak),
         .icon = MessageBox::Icon::Information});
}

void ConfigurationFiles::say(const std::string& text) {
    parts_.desk.boxes.show({.text = text});
}

} // namespace bitlux
