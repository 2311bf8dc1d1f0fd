#include "bench/model/model_switches.h"

#include <algorithm>
#include <map>
#include <string>

namespace bitlux {

namespace {

constexpr std::string_view usualTitle = "Read"; ///< of a view that has no other

using Parts = std::vector<std::unique_ptr<ModelPart>>;

bool isMade(const chips::View& view, const Parts& parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [&view](const auto& part) { return part->shown(view).has_value(); });
}

bool isThere(const chips::View& view, const std::string& variant) {
    return view.on.empty() || variant.empty() ||
           std::find(view.on.begin(), view.on.end(), variant) != view.on.end();
}

/// Bits that come from inside the chip.
bool comesFromInside(const chips::Register& any) {
    return any.access == chips::Access::ReadOnly || any.access == chips::Access::ReadClears ||
           any.access == chips::Access::WriteOneClears;
}

class Adder {
public:
    Adder(SwitchTable& table, ModelStore& store, const Parts& parts)
        : table_(table), store_(store), parts_(parts) {
        for (const chips::Register& owner : store.chip().registers)
            for (const chips::View& view : owner.views)
                ++titles_[view.ownValue() && view.row.form.empty() ? view.title : ""];
    }

    void addRegister(const chips::Register& owner) {
        const chips::Row* shown = owner.views.empty() ? &owner.row : nullptr;
        for (const chips::View& view : owner.views) {
            if (isMade(view, parts_) || !isThere(view, store_.device().variant))
                continue;
            if (!view.ownValue())
                shown = shown != nullptr ? shown : &view.row;
            else if (view.row.form.empty())
                table_.add(groupOf(owner, view), captions(view.row), store_.of(owner, view));
        }
        if (shown != nullptr && comesFromInside(owner))
            table_.add(owner.title, captions(*shown), store_.of(owner));
    }

    [[nodiscard]] std::vector<std::string> captions(const chips::Row& row) const {
        return store_.chip().variants.captionsOn(store_.device().variant, row);
    }

private:
    /// The title of the view, if it distinguishes the view from others.
    [[nodiscard]] std::string groupOf(const chips::Register& owner, const chips::View& view) const {
        if (!view.switches.empty())
            return view.switches;
        if (view.title == usualTitle)
            return owner.title;
        return titles_.at(view.title) == 1 ? view.title : owner.title + " " + view.title;
    }

    SwitchTable& table_;
    ModelStore& store_;
    const Parts& parts_;
    std::map<std::string, int> titles_; ///< how often each is there
};

} // namespace

void addModelSwitches(SwitchTable& table, ModelStore& store, const Parts& parts) {
    Adder adder(table, store, parts);
    for (const chips::Register& owner : store.chip().registers)
        adder.addRegister(owner);
    const bool made = std::any_of(parts.begin(), parts.end(),
                                  [](const auto& part) { return part->status().has_value(); });
    if (!made)
        table.add("Status", adder.captions(store.chip().word.status), store.status,
                  store.chip().word.statusFirst);
}

} // namespace bitlux
