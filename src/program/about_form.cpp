#include "program/about_form.h"

#include "platform/desk.h"
#include "program/version.h"

#include <fmt/format.h>

namespace bitlux {

AboutForm::AboutForm(forms::FormSet& set, std::int16_t buildNumber,
                     SystemInformation* systemInformation)
    : Form(set, "frmAbout", "About Bitlux Forge"),
      lblTitle(*this, "lblTitle", applicationTitle),
      lblVersion(*this, "lblVersion", fmt::format("Version {}", programVersion)),
      lblBuild(*this, "lblBuild", fmt::format("Build {}", buildNumber)),
      lblDisclaimer(*this, "lblDisclaimer",
                    "Bitlux Forge is a bench tool. It drives pins as you tell it to, without "
                    "knowing what is connected to them, and comes without any warranty. Check "
                    "levels and wiring before you send, and do not use it where a wrong word "
                    "could harm people or property."),
      cmdOK(*this, "cmdOK", "&OK"),
      cmdSysInfo(*this, "cmdSysInfo", "&System Info...") {
    procedure("cmdOK_Click", [this] { setVisible(false); });
    const bool available = systemInformation != nullptr && systemInformation->available();
    procedure("cmdSysInfo_Click", [available, systemInformation] {
        if (available)
            systemInformation->start();
    });
    if (!available) {
        cmdSysInfo.disable();
        cmdSysInfo.setTooltip("No system information tool was found on this machine.");
    }
}

} // namespace bitlux
