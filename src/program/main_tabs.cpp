#include "program/main_tabs.h"

#include "platform/failure.h"

#include <array>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int genericPages = 2;
constexpr int pages = 7;
constexpr std::int32_t panelWithSendButtons = 72537; // its tab leaves the Send buttons as they are

/// What is known of a part before it has a tab.
struct PartRow {
    std::int32_t number;
    std::int16_t frame;
    std::int16_t wordLength;
    std::int16_t type;
    const char* caption;
    const char* tooltip;
};

/// By their pages.
constexpr std::array<PartRow, 5> partRows{{
    {72517, 3, 8, 4, "ZT72517", "Use this tab to send PSPI for 72517"},
    {72518, 4, 16, 1, "SBC ZT7251x Family", "ZT72514 - 511 - 518 control"},
    {72361, 5, 8, 1, "ZT72361", "ZT72361 Control"},
    {72537, 6, 8, 2, "ZT72537 - SBC LIN 2.5G", "ZT72537 - SBC LIN 2.5G control"},
    {72516, 7, 32, 1, "ZT72516", "ZT72516 control"},
}};

const PartRow& rowOf(std::int32_t partNumber) {
    for (const PartRow& row : partRows)
        if (row.number == partNumber)
            return row;
    throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no part {}", partNumber));
}

std::string titleOf(std::int32_t partNumber) {
    return fmt::format("ZT{} Bitlux Forge", partNumber);
}

std::vector<forms::TabStrip::Tab> tabsOfAllParts() {
    std::vector<forms::TabStrip::Tab> tabs{
        {"Send &One Command at a Time", "Use this tab to send SPI messages one at a time"},
        {"Send a &Batch of Commands",
         "Use this tab to send a batch of SPI messages with one click"}};
    for (const PartRow& row : partRows)
        tabs.push_back({row.caption, row.tooltip});
    return tabs;
}

} // namespace

MainTabs::MainTabs(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      TabStripMain(form, "TabStripMain", tabsOfAllParts()),
      FrameMain("FrameMain", 1, pages,
                [&form](const std::string& name, int index) {
                    return std::make_unique<forms::Frame>(form, name, "", index);
                }),
      ZT72518_windows(form, "ZT72518_windows", "Open ZT7251x &Panel"),
      open_72537(form, "open_72537", "Open ZT72537 &Panel"),
      OpenZT72516Window(form, "OpenZT72516Window", "Open ZT72516 &Panel") {
    for (int page = 2; page <= pages; ++page)
        FrameMain(page).hide();
    form.procedure("ResetTabs", [this] { ResetTabs(); });
    form.procedure("IsTabActive", [this](std::int32_t part) { return IsTabActive(part); });
    form.procedure("TabStripMain_Click", [this] { TabStripMain_Click(); });
    form.procedure("ZT72518_windows_Click", [this] { ZT72518_windows_Click(); });
    form.procedure("OpenZT72516Window_Click", [this] { OpenZT72516Window_Click(); });
    form.procedure("open_72537_Click", [this] { open_72537_Click(); });
    for (const PartRow& row : partRows)
        form.procedure(fmt::format("Add{}Tab", row.number),
                       [this, number = row.number] { addPartTab(number); });
}

void MainTabs::removePartTabs() {
    for (int tab = pages; tab > genericPages; --tab)
        if (TabStripMain.count() == tab)
            TabStripMain.removeTab(tab);
}

void MainTabs::ResetTabs() {
    removePartTabs();
    TabStripMain.setSelected(1);
    session_.ActiveMainTab = 1;
    FrameMain(1).show();
    for (int page = 2; page <= pages; ++page)
        FrameMain(page).hide();
}

bool MainTabs::IsTabActive(std::int32_t partNumber) const {
    for (int tab = genericPages + 1; tab <= TabStripMain.count(); ++tab)
        if (session_.PartTabs.at(static_cast<std::size_t>(tab - genericPages - 1)).PartNumber ==
            partNumber)
            return true;
    return false;
}

void MainTabs::addPartTab(std::int32_t partNumber) {
    const PartRow& row = rowOf(partNumber);
    const auto record = static_cast<std::size_t>(TabStripMain.count() - genericPages);
    if (record >= session_.PartTabs.size())
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: there is room for {} part tabs",
                                  session_.PartTabs.size()));
    TabStripMain.addTab({row.caption, row.tooltip});
    session_.PartTabs[record] = {.PartNumber = row.number,
                                 .FrameIndex = row.frame,
                                 .TitleText = titleOf(row.number),
                                 .WordLength = row.wordLength,
                                 .TypeNumber = row.type};
}

void MainTabs::TabStripMain_Click() {
    const int tab = TabStripMain.selected();
    if (tab == session_.ActiveMainTab)
        return;
    startUsb(); // a dongle that was plugged in later is found at a change of page
    parts_.run.cmdStopContinuous_Click();
    pageOf(session_.ActiveMainTab).hide();
    if (tab <= genericPages)
        showGenericPage(tab);
    else
        showPartPage(tab);
    session_.ActiveMainTab = static_cast<std::int16_t>(tab);
}

forms::Frame& MainTabs::pageOf(int tab) const {
    if (tab <= genericPages)
        return FrameMain(tab);
    return FrameMain(
        session_.PartTabs.at(static_cast<std::size_t>(tab - genericPages - 1)).FrameIndex);
}

void MainTabs::showGenericPage(int tab) {
    // Word length and type of the part stay.
    FrameMain(tab).show();
    parts_.labelMainTitle.setCaption("Generic Bitlux Forge");
    parts_.run.offerSend(true);
}

void MainTabs::showPartPage(int tab) {
    const PartTab& part = session_.PartTabs.at(static_cast<std::size_t>(tab - genericPages - 1));
    FrameMain(part.FrameIndex).show();
    parts_.labelMainTitle.setCaption(part.TitleText);
    session_.SPIWordLength = part.WordLength;
    session_.SPIType = part.TypeNumber;
    showPanel(part.PartNumber);
    if (part.PartNumber == panelWithSendButtons)
        return;
    startUsb();
    parts_.run.offerSend(false);
}

void MainTabs::ZT72518_windows_Click() {
    constexpr std::int16_t type = 2; // on purpose another than that of the tab
    visit(72518, 16, type);
}

void MainTabs::OpenZT72516Window_Click() {
    visit(72516, 32, 1);
}

void MainTabs::open_72537_Click() {
    showPanel(72537);
}

void MainTabs::visit(std::int32_t partNumber, std::int16_t wordLength, std::int16_t type) {
    showPanel(partNumber);
    startUsb();
    pageOf(session_.ActiveMainTab).hide();
    pageOf(TabStripMain.selected()).show();
    parts_.labelMainTitle.setCaption(titleOf(partNumber));
    session_.SPIWordLength = wordLength;
    session_.SPIType = type;
    parts_.run.offerSend(false);
}

} // namespace bitlux
