#include "panels/zt72361/modes.h"

#include "panels/common/described_register.h"
#include "panels/zt72361/watchdog.h"
#include "platform/conversions.h"

namespace bitlux::zt72361 {

namespace {

constexpr std::uint8_t normalMode = 1;
constexpr std::uint64_t dataMask = 0x0F;
constexpr forms::Color bright = 0xC0E0FF;
constexpr forms::Color dark = 33023;
constexpr std::uint8_t active = 1;

} // namespace

Modes::Modes(const PanelContext& context)
    : mode_(describedRegister(context.chip, "MCR")),
      session_(context.outside.session),
      engine_(context.outside.engine),
      boxes_(context.outside.desk.boxes),
      controls_(context.controls),
      watchdog_(context.part<Watchdog>()),
      autoRead_(
          context, {.on = {"OptRead", 1}, .off = {"OptRead", 0}},
          [this] {
              if (autoRead_.isOn() && watchdog_.isOn())
                  controls_.run("CmdReadAll");
          },
          [this](bool on) { controls_.find("FrmRead")->setEnabled(on); }),
      leaving_(context.outside.engine.wordLeaving.follow([this] { showSent(); })) {
    context.words.adjust = [this](PanelWords::Purpose, const chips::Register* target,
                                  std::uint64_t word) {
        if (target != nullptr)
            writes(*target, word);
        return word;
    };
    context.words.sent = [this](const chips::Line& line, const std::string&) { wrote(line); };
    addHandlers();
}

void Modes::addHandlers() {
    controls_.onClick("CmdReadAll", [this] {
        auto& lamp = controls_.get<forms::Label>("ShpRead");
        lamp.setBackColor(lamp.backColor() == bright ? dark : bright);
    });
    controls_.onClick("CmdEnterStop", [this] { CmdEnterStop_Click(); });
    controls_.onClick({"OptCan", 0}, [this] { OptCan_Click(false); });
    controls_.onClick({"OptCan", 1}, [this] { OptCan_Click(true); });
    OptCan_Click(false);
}

/// The watchdog must run before the chip enters Normal mode.
void Modes::writes(const chips::Register& target, std::uint64_t word) {
    const std::uint64_t data = word & dataMask & ~target.alwaysWritten;
    if (&target == &mode_ && data == normalMode)
        watchdog_.start();
    session_.ZT72361Data = static_cast<std::uint8_t>(data);
}

/// The other modes need none, except for the word that enters and leaves debug mode.
void Modes::wrote(const chips::Line& line) {
    if (line.name == mode_.writeLine.name && session_.ZT72361Data > normalMode)
        watchdog_.choose(false);
}

void Modes::send(const ControlRef& option, const char* button) const {
    controls_.get<forms::OptionButton>(option).setValue(true);
    controls_.run(button);
}

void Modes::CmdEnterStop_Click() {
    const FailureBoxes::Run run(engine_.failures());
    send({"OptMcr", 1}, "CmdMcr");
    send({"OptRcr", 6}, "CmdRcr");
    controls_.run("CmdReadAll");
    if (!session_.WordAnswered) // no flags were read
        return;
    boxes_.show(
        {.text = "Flags read, ready to enter in Stop Mode !", .title = "Enter in Stop Mode"});
    send({"OptMcr", 3}, "CmdMcr");
}

void Modes::OptCan_Click(bool sleeps) {
    controls_.find("FrmSlew")->setVisible(!sleeps);
    controls_.find("FrmWake")->setVisible(sleeps);
}

void Modes::showSent() {
    if (session_.ZT72361PanelActive == active && !session_.WordToSend.empty())
        controls_.get<forms::Label>({"Label_Liste", 0})
            .setCaption("Sent : " + hex(static_cast<std::uint64_t>(session_.WordToSend.front())));
}

} // namespace bitlux::zt72361
