#include "program/main_tabs.h"

#include "platform/failure.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int genericPages = 2;
constexpr int pages = 7;
constexpr std::size_t mostChips = 100;               ///< tabs of users' chips
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

/// In a notice.
std::string tabOf(std::int32_t partNumber) {
    return partNumber == 72518 ? "the ZT7251x tab" : fmt::format("the ZT{} tab", partNumber);
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
      open_72361(form, "open_72361", "Open ZT72361 &Panel"),
      open_72537(form, "open_72537", "Open ZT72537 &Panel"),
      OpenZT72516Window(form, "OpenZT72516Window", "Open ZT72516 &Panel"),
      FrameChip(form, "FrameChip"),
      OpenChipPanel(form, "OpenChipPanel", "Open &Panel") {
    FrameChip.hide();
    for (int page = 2; page <= pages; ++page)
        FrameMain(page).hide();
    form.procedure("ResetTabs", [this] { ResetTabs(); });
    form.procedure("IsTabActive", [this](std::int32_t part) { return IsTabActive(part); });
    form.procedure("TabStripMain_Click", [this] { TabStripMain_Click(); });
    form.procedure("ZT72518_windows_Click", [this] { ZT72518_windows_Click(); });
    form.procedure("OpenZT72516Window_Click", [this] { OpenZT72516Window_Click(); });
    form.procedure("open_72361_Click", [this] { showPanel(72361); });
    form.procedure("open_72537_Click", [this] { open_72537_Click(); });
    form.procedure("OpenChipPanel_Click", [this] { OpenChipPanel_Click(); });
    form.procedure("AddChipTab", [this](const std::string& name) { AddChipTab(name); });
    form.procedure("RemoveChipTab", [this](const std::string& name) { RemoveChipTab(name); });
    for (const PartRow& row : partRows)
        form.procedure(fmt::format("Add{}Tab", row.number),
                       [this, number = row.number] { addPartTab(number); });
}

void MainTabs::removePartTabs() {
    for (int tab = lastPartTab(); tab > genericPages; --tab)
        TabStripMain.removeTab(tab);
}

int MainTabs::lastPartTab() const {
    return TabStripMain.count() - static_cast<int>(chips_.size());
}

void MainTabs::ResetTabs() {
    removePartTabs();
    TabStripMain.setSelected(1);
    session_.ActiveMainTab = 1;
    FrameMain(1).show();
    for (int page = 2; page <= pages; ++page)
        FrameMain(page).hide();
    FrameChip.hide();
}

bool MainTabs::IsTabActive(std::int32_t partNumber) const {
    for (int tab = genericPages + 1; tab <= lastPartTab(); ++tab)
        if (session_.PartTabs.at(static_cast<std::size_t>(tab - genericPages - 1)).PartNumber ==
            partNumber)
            return true;
    return false;
}

std::int32_t MainTabs::selectedPart() const {
    const int tab = TabStripMain.selected();
    if (tab <= genericPages || tab > lastPartTab())
        return 0;
    return session_.PartTabs.at(static_cast<std::size_t>(tab - genericPages - 1)).PartNumber;
}

std::string MainTabs::selectedChip() const {
    const int tab = TabStripMain.selected();
    const std::vector<std::string> all = chipTabs();
    return tab > genericPages && tab <= TabStripMain.count()
               ? all.at(static_cast<std::size_t>(tab - genericPages - 1))
               : std::string();
}

std::vector<std::string> MainTabs::chipTabs() const {
    std::vector<std::string> all;
    for (int tab = genericPages + 1; tab <= lastPartTab(); ++tab)
        all.push_back(fmt::format(
            "zt{}",
            session_.PartTabs.at(static_cast<std::size_t>(tab - genericPages - 1)).PartNumber));
    all.insert(all.end(), chips_.begin(), chips_.end());
    return all;
}

void MainTabs::addPartTab(std::int32_t partNumber) {
    const PartRow& row = rowOf(partNumber);
    const int tab = lastPartTab() + 1;
    const auto record = static_cast<std::size_t>(tab - genericPages - 1);
    if (record >= session_.PartTabs.size())
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("Subscript out of range: there is room for {} part tabs",
                                  session_.PartTabs.size()));
    TabStripMain.insertTab(tab, {row.caption, row.tooltip});
    if (session_.ActiveMainTab >= tab)
        ++session_.ActiveMainTab;
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
    else if (tab <= lastPartTab())
        showPartPage(tab);
    else
        showChipPage(tab);
    session_.ActiveMainTab = static_cast<std::int16_t>(tab);
}

forms::Frame& MainTabs::pageOf(int tab) {
    if (tab <= genericPages)
        return FrameMain(tab);
    if (!chips_.empty() && tab > lastPartTab())
        return FrameChip;
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
    parts_.shape.lent(tabOf(part.PartNumber));
    showPanel(part.PartNumber);
    if (part.PartNumber == panelWithSendButtons)
        return;
    startUsb();
    parts_.run.offerSend(false);
}

void MainTabs::showChipPage(int tab) {
    // The panel brings word length and type.
    FrameChip.show();
    parts_.labelMainTitle.setCaption(chips_.at(static_cast<std::size_t>(tab - lastPartTab() - 1)) +
                                     " Bitlux Forge");
    parts_.run.offerSend(false);
}

void MainTabs::OpenChipPanel_Click() {
    const int position = TabStripMain.selected() - lastPartTab() - 1;
    if (position >= 0)
        showUserPanel(chips_.at(static_cast<std::size_t>(position)));
}

void MainTabs::AddChipTab(const std::string& name) {
    parts_.library.requireUsers(name);
    const std::size_t before = session_.UserChips.size();
    enableChip(name);
    if (session_.UserChips.size() != before)
        session_.ConfigDirty = ConstOn;
}

void MainTabs::selectChipTab(const std::string& name) {
    const auto found = std::find(chips_.begin(), chips_.end(), name);
    if (found != chips_.end())
        TabStripMain.setSelected(lastPartTab() + 1 + static_cast<int>(found - chips_.begin()));
}

void MainTabs::RemoveChipTab(const std::string& name) {
    if (std::erase(session_.UserChips, name) == 0)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("The chip \"{}\" is not enabled", name));
    session_.ConfigDirty = ConstOn;
    const auto found = std::find(chips_.begin(), chips_.end(), name);
    if (found != chips_.end())
        removeChipTab(static_cast<std::size_t>(found - chips_.begin()));
}

bool MainTabs::enableChip(const std::string& name) {
    std::vector<std::string>& enabled = session_.UserChips;
    if (!chips::isChipName(name)) // no chip can have it
        return false;
    if (std::find(enabled.begin(), enabled.end(), name) == enabled.end()) {
        if (enabled.size() == mostChips)
            throw Failure(Failure::Kind::OutOfRange,
                          fmt::format("there is room for {} chips", mostChips));
        enabled.push_back(name);
    }
    if (std::find(chips_.begin(), chips_.end(), name) != chips_.end())
        return true;
    if (!parts_.library.isUsers(name))
        return false;
    TabStripMain.addTab({name, name + " control"});
    chips_.push_back(name);
    return true;
}

void MainTabs::disableChips() {
    session_.UserChips.clear();
    while (!chips_.empty())
        removeChipTab(chips_.size() - 1);
}

void MainTabs::removeChipTab(std::size_t position) {
    const int tab = lastPartTab() + 1 + static_cast<int>(position);
    if (session_.ActiveMainTab == tab)
        TabStripMain.setSelected(1); // its handler shows the page
    else if (session_.ActiveMainTab > tab)
        --session_.ActiveMainTab;
    TabStripMain.removeTab(tab);
    chips_.erase(chips_.begin() + static_cast<std::ptrdiff_t>(position));
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
    parts_.shape.lent(tabOf(partNumber));
    parts_.run.offerSend(false);
}

} // namespace bitlux
