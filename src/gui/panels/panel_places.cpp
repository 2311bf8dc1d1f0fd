#include "gui/panels/panel_places.h"

#include <algorithm>
#include <optional>

namespace bitlux::gui {

namespace {

/// The place of a view: an outer page of flags, or else a page of registers.
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
    if (view.page == chips::statusPage)
        return {.flags = {}, .registers = view.page};
    if (const auto named = flagsPage(chip, view.page))
        return {.flags = named, .registers = {}};
    const std::vector<std::string> pages = chip.registerPages();
    if (std::find(pages.begin(), pages.end(), view.page) != pages.end())
        return {.flags = {}, .registers = view.page};
    if (const auto first = flagsPage(chip, {}))
        return {.flags = first, .registers = {}};
    return {.flags = {}, .registers = owner.page};
}

/// The actions that `wanted` accepts, by form and page.
template <typename Wanted>
Actions actionsWhere(const chips::Chip& chip, Wanted wanted) {
    static const chips::ControlName none;
    Actions all;
    for (const chips::ReadAll& any : chip.readAlls)
        if (wanted(any.form, any.page.empty() ? std::string(chips::statusPage) : any.page))
            all.push_back({&any.title, &any.group, {}, &any.button, &none});
    for (const chips::Command& any : chip.commands)
        if (wanted(any.form, any.page))
            all.push_back({&any.title, &any.group, any.note, &any.button, &any.line.button});
    return all;
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
        if (any.page != page || !any.row.form.empty())
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

Actions actionsOn(const chips::Chip& chip, const std::string& page) {
    return actionsWhere(chip, [&page](const std::string& form, const std::string& place) {
        return form.empty() && place == page;
    });
}

std::vector<std::string> groupsOf(const Actions& actions) {
    std::vector<std::string> groups;
    for (const Action& action : actions)
        if (std::find(groups.begin(), groups.end(), *action.group) == groups.end())
            groups.push_back(*action.group);
    return groups;
}

std::vector<const chips::View*> ownViews(const chips::Chip& chip, const chips::Register& owner) {
    std::vector<const chips::View*> views;
    for (const chips::View& view : owner.views) {
        const ViewPlace place = placeOf(chip, owner, view);
        if (view.row.form == owner.row.form && !place.flags && place.registers == owner.page)
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

bool hasViewsBesidePages(const chips::Chip& chip) {
    return !guestsOn(chip, std::string(chips::statusPage)).empty();
}

std::vector<PlacedView> flagsOn(const chips::Chip& chip, std::size_t outerPage) {
    std::vector<PlacedView> views;
    forEachView(chip, [&](const auto& owner, const auto& view, const ViewPlace& place) {
        if (place.flags == outerPage)
            views.push_back({&owner, &view});
    });
    return views;
}

Registers registersBeside(const chips::Chip& chip, const std::string& form) {
    Registers all;
    for (const chips::Register& any : chip.registers)
        if (any.row.form == form)
            all.push_back(&any);
    return all;
}

Actions actionsBeside(const chips::Chip& chip, const std::string& form) {
    return actionsWhere(
        chip, [&form](const std::string& owner, const std::string&) { return owner == form; });
}

std::vector<PlacedView> viewsBeside(const chips::Chip& chip, const std::string& form) {
    std::vector<PlacedView> views;
    for (const chips::Register& owner : chip.registers)
        for (const chips::View& view : owner.views)
            if (view.row.form == form && owner.row.form != form)
                views.push_back({&owner, &view});
    return views;
}

} // namespace bitlux::gui
