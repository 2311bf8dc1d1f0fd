// Writes a picture of every form in its main states, for visual checks: all of them, or those of
// one row of `screens`, or with "chip" and the name of a file those of the panel of this chip. A
// folder and the scale precede these.

#include "gui/desktop/theme.h"
#include "gui/screens/adapter_screens.h"
#include "gui/screens/byte_panel_screens.h"
#include "gui/screens/decoded_screens.h"
#include "gui/screens/described_screens.h"
#include "gui/screens/main_screens.h"
#include "gui/screens/notice_screens.h"
#include "gui/screens/type_screens.h"
#include "gui/screens/waveform_screens.h"
#include "gui/screens/zt72516_screens.h"
#include "gui/screens/zt72517_screens.h"
#include "gui/screens/zt72518_screens.h"

#include <array>
#include <string_view>

#include <QApplication>
#include <QDir>

namespace {

using namespace bitlux;

struct Screens {
    std::string_view name;
    const char* prefix;
    void (*paint)(const QString& prefix, const QString& tail);
};

constexpr std::array screens{Screens{"main", "", gui::paintMain},
                             Screens{"types", "/types", gui::paintTypes},
                             Screens{"notices", "/notice", gui::paintNotices},
                             Screens{"decoded", "/decoded", gui::paintDecoded},
                             Screens{"adapter", "/adapter", gui::paintAdapter},
                             Screens{"waveform", "/waveform", gui::paintWaveforms},
                             Screens{"bytes", "", gui::paintBytePanels},
                             Screens{"zt72516", "/zt72516", gui::paintZt72516},
                             Screens{"zt72517", "/zt72517", gui::paintZt72517},
                             Screens{"panel", "/panel", gui::paintZt72518}};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QString folder = argc > 1 ? argv[1] : "screens";
    const QString scale = argc > 2 ? argv[2] : "100";
    const std::string_view only = argc > 3 ? argv[3] : "";
    const char* chip = argc > 4 && only == "chip" ? argv[4] : nullptr;
    QDir().mkpath(folder);
    for (const bool dark : {false, true}) {
        gui::applyTheme(dark);
        const QString tail = QString("-%1-%2").arg(dark ? "dark" : "light", scale);
        if (chip != nullptr)
            gui::paintDescribed(chip, folder + "/chip", tail);
        for (const Screens& any : screens)
            if (only.empty() || only == any.name)
                any.paint(folder + any.prefix, tail);
    }
    return 0;
}
