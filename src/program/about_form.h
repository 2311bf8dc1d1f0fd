#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/system_information.h"

#include <cstdint>

namespace bitlux {

/// frmAbout: what program this is, and the way to the platform's system information.
class AboutForm : public forms::Form {
public:
    /// `systemInformation` outlives the form, or is null.
    AboutForm(forms::FormSet& set, std::int16_t buildNumber, SystemInformation* systemInformation);

    forms::Label lblTitle;
    forms::Label lblVersion;
    forms::Label lblBuild;
    forms::Label lblDisclaimer;
    forms::Button cmdOK;
    forms::Button cmdSysInfo;
};

} // namespace bitlux
