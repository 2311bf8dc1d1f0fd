#include "gui/panel_places.h"

#include <algorithm>
#include <optional>

namespace bitlux::gui {

namespace {

/// Where a view is: an outer page of flags, or else a page of registers.
struct ViewPlace {
    std::optional<std::size_t> flags;
    std::string registers;
};

std::optional<std::size_t> flagsPage(const chips::Chip& chip, const std::string& title) {
    const std::vector<chips::OuterPage>& pages = chip.panel.pages;
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (pages[i].shows == "flags" && (title.empty() || pages[i].title == title))
            return i;
    return std::nullopt;
}

ViewPlace placeOf(const chips::Chip& chip, const chips::Register& owner, const chips::View& view) {
    if (view.page.empty() || view.page == owner.page)
        return {.flags = {}, .registers = owner.page};
    if (const auto named = flagsPage(chip, view.page))
        return {.flags = named, .registers = {}};
    const std::vector<std::string> pages = chip.registerPages();
    if (std::find(pages.begin(), pages.end(), view.page) != pages.end())
        return {.flags = {}, .registers = view.page};
    if (const auto first = flagsPage(chip, {}))
        return {.flags = first, .registers = {}};
    return {.flags = {}, .registers = owner.page};
}

/// The views that this form shows, with their places.
template <typename Take>
void forEachView(const chips::Chip& chip, Take take) {
    for (const chips::Register& owner : chip.registers)
        for (const chips::View& view : owner.views)
            if (view.row.form.empty())
                take(owner, view, placeOf(chip, owner, view));
}

} // namespace

std::vector<Registers> registersOn(const chips::Chip& chip, const std::string& page) {
    std::vector<Registers> all;
    for (const chips::Register& any : chip.registers) {
        if (any.page != page)
            continue;
        const auto together = std::find_if(all.begin(), all.end(), [&any](const Registers& others) {
            return any.row.exists() && others.front()->row.first == any.row.first;
        });
        if (together == all.end())
            all.push_back({&any});
        else
            together->push_back(&any);
    }
    return all;
}

Commands commandsOn(const chips::Chip& chip, const std::string& page) {
    Commands all;
    for (const chips::Command& any : chip.commands)
        if (any.page == page)
            all.push_back(&any);
    return all;
}

std::vector<const chips::View*> ownViews(const chips::Chip& chip, const chips::Register& owner) {
    std::vector<const chips::View*> views;
    for (const chips::View& view : owner.views) {
        const ViewPlace place = placeOf(chip, owner, view);
        if (view.row.form.empty() && !place.flags && place.registers == owner.page)
            views.push_back(&view);
    }
    return views;
}

std::vector<PlacedView> guestsOn(const chips::Chip& chip, const std::string& page) {
    std::vector<PlacedView> views;
    forEachView(chip, [&](const auto& owner, const auto& view, const ViewPlace& place) {
        if (!place.flags && place.registers == page && owner.page != page)
            views.push_back({&owner, &view});
    });
    return views;
}

std::vector<PlacedView> flagsOn(const chips::Chip& chip, std::size_t outerPage) {
    std::vector<PlacedView> views;
    forEachView(chip, [&](const auto& owner, const auto& view, const ViewPlace& place) {
        if (place.flags == outerPage)
            views.push_back({&owner, &view});
    });
    return views;
}

} // namespace bitlux::gui
