#include "config/configuration_files.h"

#include "config/configuration_reader.h"
#include "config/configuration_writer.h"
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
    ConfigurationReader reader({.session = session_,
                                .dialog = dialog(),
                                .commands = parts_.commands,
                                .batches = parts_.batches,
                                .log = parts_.log,
                                .tabs = tabs},
                               fileName);
    if (!reader.isConfiguration()) {
        say("Invalid File Format.");
        return;
    }
    {
        const Hourglass hourglass(parts_.desk.pointer);
        reader.read();
    }
    fileUsed.raise();
    tellMissing(reader.missingChips());
}

void ConfigurationFiles::itemSave_Click() {
    parts_.run.cmdStopContinuous_Click();
    if (session_.ConfigFileName.empty()) {
        const std::optional<std::string> name = ask(FileDialog::Kind::Save);
        if (!name)
            return;
        session_.ConfigFileName = *name;
    }
    if (session_.ConfigFileName.empty()) {
        say("No filename selected.  Cannot Save.");
        return;
    }
    write();
    fileUsed.raise();
}

void ConfigurationFiles::itemSaveAs_Click() {
    const std::optional<std::string> name = ask(FileDialog::Kind::Save);
    if (!name)
        return;
    session_.ConfigFileName = *name;
    itemSave_Click();
}

void ConfigurationFiles::write() {
    session_.ConfigDirty = ConstOff;
    try {
        const Hourglass hourglass(parts_.desk.pointer);
        replaceFile(session_.ConfigFileName,
                    configurationText(configurationSettings(dialog(), session_, tabs), session_,
                                      parts_.commands.toSend()));
    } catch (...) {
        session_.ConfigDirty = ConstOn;
        throw;
    }
}

std::optional<std::string> ConfigurationFiles::ask(FileDialog::Kind kind) {
    return parts_.desk.fileDialogs.ask(
        {.kind = kind,
         .title = kind == FileDialog::Kind::Open ? "Open Configuration" : "Save Configuration",
         .filter = "SPI Config Files (*.spi)|*.spi|All Files (*.*)|*.*",
         .fileName = session_.ConfigFileName});
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
