#include "panels/zt72518/panel_form.h"

#include "chips/zt72518/registers.h"
#include "panels/common/binary_text.h"

#include <memory>
#include <string>

namespace bitlux::zt72518 {

namespace chip = chips::zt72518;

namespace {

constexpr std::int16_t wordBits = 16;
constexpr std::int16_t spiType = 2;
constexpr int outerPages = 0;
constexpr chips::ControlName parityBox{"Ch_Init_Misc", 6};

std::vector<forms::TabStrip::Tab> tabs(int strip) {
    if (strip == outerPages)
        return {
            {"Sequence", ""}, {"Diagram", ""}, {"Registers", ""}, {"Flags", ""}, {"Watchdog", ""}};
    std::vector<forms::TabStrip::Tab> result;
    for (const chip::Page& page : chip::pages)
        result.push_back({std::string(page.title), ""});
    return result;
}

} // namespace

PanelForm::PanelForm(forms::FormSet& set, const Parts& parts)
    : Form(set, "ZT72518", "ZT72518 - 511 - 514 Interface"),
      session_(parts.session),
      boxes_(parts.desk.boxes),
      shape_(parts.session),
      filters_(parts.desk.boxes, parts.desk.sound),
      link(*this, parts.session, parts.engine),
      pageControls(*this),
      words(link, variables_, sinks),
      registers(pageControls, words, chip::registers),
      decoder(variables_),
      status(pageControls, parts.session, parts.engine),
      tab_518("tab_518", 0, 1,
              [this](const std::string& name, int strip) {
                  return std::make_unique<forms::TabStrip>(*this, name, tabs(strip), strip);
              }),
      specialMode(pageControls, registers, words),
      mode(pageControls, registers, words, variables_),
      ram(*this, pageControls, filters_, boxes_),
      flags(pageControls, words, link, [this] { return selection.variant(); }),
      diagram(*this, pageControls, link),
      selection(*this, pageControls, parts.markers),
      sequencer(*this, {.session = parts.session,
                        .failures = parts.engine.failures(),
                        .variables = variables_,
                        .link = link,
                        .controls = pageControls,
                        .words = words,
                        .decoder = decoder,
                        .dongle = parts.dongle,
                        .startCaption = pageControls.get<forms::Label>(StatusLabels::loopStart),
                        .stopCaption = pageControls.get<forms::Label>(StatusLabels::loopStop),
                        .desk = parts.desk,
                        .clock = parts.clock}) {
    sinks = sequencer.sinks();
    decoder.clickWatchdog = [this](int button) { call("watchdog_Click", button); };
    addRefreshMirror();
    pageControls.onClick(parityBox, [this] {
        variables_.SPIParityEnabled = pageControls.get<forms::CheckBox>(parityBox).checked();
    });
    pageControls.registerHandlers();
    registerVariables(*this, variables_, parts.session);
    registerProcedures();
    registerFilters();
}

void PanelForm::addRefreshMirror() {
    const chips::OptionField& shown = chip::registers[chip::initWdog].options.front();
    pageControls.addFrame({"wd_frame"}, "WD Refresh Mode (See Only. for Change =>see Init Wd)")
        .disable();
    pageControls.addOptions(shown.mirror.name, shown.mirror.index, shown.captions);
    for (int value = 0; value < static_cast<int>(shown.captions.size()); ++value)
        pageControls.find({shown.mirror.name, shown.mirror.index + value})->disable();
}

void PanelForm::registerProcedures() {
    procedure("Send_SPI", [this] { link.Send_SPI(); });
    procedure("ReadLowWord", [this](std::uint8_t high) { link.ReadLowWord(high); });
    procedure("ReadHighWord", [this](std::uint8_t high) { link.ReadHighWord(high); });
    procedure("Update_Miso_Write", [this] { link.Update_Miso_Write(); });
    procedure("Update_Miso_Read", [this] { link.Update_Miso_Read(); });
    procedure("ParityOfWordLow", [this](std::uint8_t data) { words.ParityOfWordLow(data); });
    procedure("Decod_Name", [this](const std::string& name) { decoder.Decod_Name(name); });
    procedure("Color_Decod", [this](const std::string& row) {
        variables_.WordLowByte = pageControls.row(row).byte();
    });
    procedure("HEXtoBIN", [](const std::string& digits) { return HEXtoBIN(digits); });
    procedure("tab_518_Click", [this](int index) { tab_518_Click(index); });
    procedure("Form_Load", [this] { load(); });
    procedure("Form_Activate", [this] { takeOver(); });
    procedure("Form_Unload", [this] { unload(); });
}

void PanelForm::registerFilters() {
    procedure("HEXA_check", [this](int key) { return filters_.HEXA_check(key); });
    procedure("NUM_check", [this](int key) { return filters_.NUM_check(key); });
    procedure("DECimal_check", [this](int key) { return filters_.DECimal_check(key); });
    procedure("BINary_x_check", [this](int key) { return filters_.BINary_x_check(key); });
}

void PanelForm::load() {
    pageControls.row("RAM").show(0);
    variables_.ParityBit = 0;
    variables_.ReadBit = 1;
    if (session_.ZT72518PanelActive == 0) // else it is called once more
        shape_.keep();
    selection.load();
    tab_518(outerPages).setSelected(RegistersPage);
    takeOver();
}

void PanelForm::takeOver() {
    shape_.set(wordBits, spiType);
    session_.ZT72518PanelActive = 1;
}

void PanelForm::unload() {
    const MessageBox question{.text = "Save the sequence before exit?",
                              .title = "Quit ZT72518 - 511 - 514 Interface",
                              .buttons = MessageBox::Buttons::YesNo};
    if (tab_518(outerPages).selected() == SequencePage) {
        if (boxes_.show(question) == MessageBox::Answer::Yes)
            call("Cm_SAVE_Seq_Click");
        else
            variables_.RunEnabled = false; // what still runs sends nothing more
    }
    diagram.leave();
    session_.ZT72518PanelActive = 0;
    shape_.giveBack();
}

void PanelForm::tab_518_Click(int index) {
    if (index == outerPages && tab_518(outerPages).selected() != Diagram)
        diagram.leave();
}

} // namespace bitlux::zt72518
