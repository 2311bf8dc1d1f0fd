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
        bool shown = owner.views.empty();
        for (const chips::View& view : owner.views) {
            shown = shown || !view.ownValue();
            if (view.ownValue() && view.row.form.empty() && !isMade(view, parts_))
                table_.add(groupOf(owner, view), view.row.captions, store_.of(owner, view));
        }
        if (shown && comesFromInside(owner))
            table_.add(owner.title, owner.row.captions, store_.of(owner));
    }

private:
    /// The title of the view where it tells the view from others.
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
        table.add("Status", store.chip().word.status.captions, store.status,
                  store.chip().word.statusFirst);
}

} // namespace bitlux
