#include "gui/panel_view.h"

#include "chips/zt72518/diagram.h"
#include "chips/zt72518/registers.h"
#include "gui/flags_view.h"
#include "gui/mode_diagram.h"
#include "gui/panel_status_view.h"
#include "gui/register_page_view.h"
#include "gui/sequence_view.h"
#include "gui/side_tabs.h"
#include "gui/watchdog_view.h"
#include "platform/forms/form_set.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStackedWidget>
#include <QToolButton>

namespace bitlux::gui {

namespace chip = chips::zt72518;

namespace {

constexpr const char* formName = "ZT72518";
constexpr int outerTabs = 0;
constexpr int registerTabs = 1;

/// A page that is looked at for the first time is made and put where it is shown.
template <typename Make>
void showPage(QStackedWidget& stack, QWidget*& page, Make make) {
    if (page == nullptr) {
        page = make();
        stack.addWidget(page);
    }
    if (stack.currentWidget() != page)
        stack.setCurrentWidget(page);
}

} // namespace

PanelView::PanelView(zt72518::PanelForm& form, Binder& binder, QWidget* parent)
    : FormDialog(
          form, [&set = form.set()] { set.perform(formName, [&set] { set.unload(formName); }); },
          binder, parent),
      form_(form),
      binder_(binder),
      widgets_{.controls = form.pageControls, .binder = binder},
      pages_(new QStackedWidget(this)),
      madeRegisters_(chip::pages.size()) {
    setWindowFlags(Qt::Window);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PanelStatusView(form_, widgets_, this));
    layout->addWidget(makeTabs());
    layout->addWidget(pages_, 1);
    makeTimers();
    leaveOutCopies();
    flushed_ = binder_.flushed.follow([this] { followForm(); });
    formGoing_ = form.set().formGoing.follow([this](forms::Form& going) {
        if (&going == &form_)
            flushed_ = {};
    });
    followForm();
    const QSize wanted(fontMetrics().averageCharWidth() * 160, fontMetrics().height() * 49);
    resize(wanted.boundedTo(QGuiApplication::primaryScreen()->availableSize() - QSize(20, 50)));
}

QWidget* PanelView::makeTabs() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    auto* tabs = binder_.make<QTabBar>(form_.tab_518(outerTabs), widget);
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    row->addWidget(tabs, 1);
    auto* test = new QToolButton(widget);
    test->setText("Test Mode...");
    test->setAutoRaise(true);
    connect(test, &QToolButton::clicked, this, [this] { form_.set().show("TestMode"); });
    row->addWidget(test);
    return widget;
}

void PanelView::makeTimers() {
    for (forms::Timer* timer : {&form_.sequencer.player.Timer1, &form_.sequencer.autoReads.timer_auto,
                                &form_.diagram.timer_auto_pre})
        binder_.bind(*timer, *new QTimer(this));
}

void PanelView::leaveOutCopies() {
    // Copies for pages that could not see what stands above all pages here.
    constexpr std::array labels{1, 2, 3, 8};
    for (const int label : labels)
        binder_.leaveOut(*widgets_.controls.find({"Label_Liste", label}));
    constexpr std::array switches{37, 38, 40};
    for (const int box : switches)
        binder_.leaveOut(form_.sequencer.autoReads.read_auto(box));
    // Copies of buttons of the watchdog.
    constexpr std::array buttons{8, 9, 10, 11, 14};
    for (const int button : buttons)
        binder_.leaveOut(form_.sequencer.watchdog.watchdog(button));
    // They say nothing.
    for (const auto& label : form_.sequencer.watchdog.wd_refresh)
        binder_.leaveOut(*label);
    // There is room for the choice, and nothing to pan.
    binder_.leaveOut(form_.selection.HScroll1);
    binder_.leaveOut(form_.selection.VScroll1);
}

void PanelView::followForm() {
    const int page = form_.tab_518(outerTabs).selected();
    showPage(*pages_, made_.at(static_cast<std::size_t>(page - 1)),
             [this, page] { return makePage(page); });
    if (page == zt72518::PanelForm::RegistersPage)
        followRegisters();
}

QWidget* PanelView::makePage(int page) {
    switch (page) {
    case zt72518::PanelForm::SequencePage:
        return new SequenceView(form_.sequencer, binder_, pages_);
    case zt72518::PanelForm::Diagram:
        return new ModeDiagram(widgets_, pages_);
    case zt72518::PanelForm::FlagsPage:
        return new FlagsView(widgets_, pages_);
    case zt72518::PanelForm::WatchdogPage:
        return new WatchdogView(form_.sequencer, binder_, pages_);
    default:
        return makeRegisters();
    }
}

QWidget* PanelView::makeRegisters() {
    auto* widget = new QWidget(pages_);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    auto* tabs = new SideTabs(widget);
    binder_.bind(form_.tab_518(registerTabs), *tabs);
    row->addWidget(tabs, 0, Qt::AlignTop);
    registerPages_ = new QStackedWidget(widget);
    row->addWidget(registerPages_, 1);
    return widget;
}

void PanelView::followRegisters() {
    const int page = form_.tab_518(registerTabs).selected() - 1;
    showPage(*registerPages_, madeRegisters_.at(static_cast<std::size_t>(page)),
             [this, page] { return makeRegisterPage(page); });
}

QWidget* PanelView::makeRegisterPage(int page) {
    const chip::Page& shown = chip::pages.at(static_cast<std::size_t>(page));
    auto* view = new RegisterPageView(std::span(chip::registers)
                                          .subspan(static_cast<std::size_t>(shown.firstRegister),
                                                   static_cast<std::size_t>(shown.count)),
                                      widgets_, registerPages_);
    switch (shown.firstRegister) {
    case chip::ramA:
        addRamExtras(*view);
        break;
    case chip::specialMode:
        addSpecialModeExtras(*view);
        break;
    case chip::watchdogRefresh:
        addRefreshExtras(*view);
        break;
    case chip::modeRandom:
        addModeExtras(*view);
        break;
    default:
        break;
    }
    return view;
}

void PanelView::addRamExtras(RegisterPageView& page) {
    auto* box = new QGroupBox("Byte to write", page.choiceParent());
    auto* row = new QHBoxLayout(box);
    auto* text = binder_.make<QLineEdit>(form_.ram.Val_Hex_RAM, box);
    text->setAccessibleName("Byte in hexadecimal");
    text->setPlaceholderText("hex");
    row->addWidget(text);
    addButtons(*row, widgets_, box, {{"Cm_OK_val_hexa"}, {"Cm_RAM_Rl_All"}});
    row->addStretch();
    page.addChoice(box);
}

void PanelView::addSpecialModeExtras(RegisterPageView& page) {
    page.addWriteButtons({{"Cm_Spe_Mode_W", 1}, {"Cm_Spe_Mode_W", 2}, {"Seq_Spe_Mode_W"}});
    constexpr int randomBits = 6;
    std::vector<forms::Label*> inverse;
    for (int bit = 0; bit < randomBits; ++bit)
        inverse.push_back(&widgets_.controls.get<forms::Label>({"Spe_Mode_Rl_b", bit}));
    auto* box = new QGroupBox("Random bits, inverted", page.choiceParent());
    auto* row = new QHBoxLayout(box);
    row->addWidget(new BitRow(inverse, BitRow::Use::Shown, binder_, box), 1);
    addButtons(*row, widgets_, box, {{"Cm_Spe_Mode_Rl_b"}});
    page.addChoice(box);
}

void PanelView::addRefreshExtras(RegisterPageView& page) {
    auto* box = widgets_.make<QGroupBox, forms::Frame>({"wd_frame"}, page.choiceParent());
    auto* column = new QVBoxLayout(box);
    const chips::OptionField& shown = chip::registers[chip::initWdog].options.front();
    for (int value = 0; value < static_cast<int>(shown.captions.size()); ++value)
        column->addWidget(widgets_.make<QRadioButton, forms::OptionButton>(
            {shown.mirror.name, shown.mirror.index + value}, box));
    page.addChoice(box);
}

void PanelView::addModeExtras(RegisterPageView& page) {
    page.addWriteButtons({{"Cm_Mode_RM_W", 1}, {"Cm_Mode_RM_W", 2}});
    auto* box = new QGroupBox("Low power", page.choiceParent());
    auto* column = new QVBoxLayout(box);
    for (int i = 0; i < static_cast<int>(chip::lowPowerModes.size()); ++i)
        column->addWidget(widgets_.make<QRadioButton, forms::OptionButton>({"s_mode", i}, box));
    for (int i = 0; i < static_cast<int>(chip::lowPowerBoxes.size()); ++i)
        column->addWidget(widgets_.make<QCheckBox, forms::CheckBox>({"opt_s_mode", i}, box));
    page.addChoice(box);
}

} // namespace bitlux::gui
