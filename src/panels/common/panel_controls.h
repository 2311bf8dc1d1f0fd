#pragma once

#include "chips/register_map.h"
#include "panels/common/label_row.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/unknown_name.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux {

/// The controls that a panel makes from tables, and what a click on them runs.
class PanelControls {
public:
    using Name = oldchips::ControlName;
    using Action = std::function<void()>;

    /// The form outlives this.
    explicit PanelControls(forms::Form& form) : form_(form) {}
    PanelControls(const PanelControls&) = delete;
    PanelControls& operator=(const PanelControls&) = delete;

    // Each makes a control; its name is free before.
    forms::Label& addLabel(const Name& name, std::string_view caption);
    forms::Button& addButton(const Name& name, std::string_view caption);
    forms::CheckBox& addBox(const Name& name, std::string_view caption);
    forms::Frame& addFrame(const Name& name, std::string_view caption);
    forms::ComboBox& addCombo(const oldchips::ComboField& field);
    /// Buttons `first` and following, of which at most one is set.
    void addOptions(std::string_view name, int first, std::span<const std::string_view> captions);
    /// Dark labels from element `first` on.
    const LabelRow& addRow(std::string_view name, oldchips::BitCaptions captions, int first = 0);

    /// Null when there is none.
    [[nodiscard]] forms::Control* find(const Name& name) const;
    /// The control as the kind that it is; raises UnknownName.
    template <typename T>
    T& get(const Name& name) const {
        auto* typed = dynamic_cast<T*>(find(name));
        if (typed == nullptr)
            throw forms::UnknownName(text(name), {});
        return *typed;
    }
    /// A row that was made; raises UnknownName.
    [[nodiscard]] const LabelRow& row(std::string_view name, int first = 0) const;
    /// The tooltips of controls, as "0x0100, 0x0B00".
    [[nodiscard]] std::string tooltips(std::span<const Name> names) const;
    /// The index of the option that is set, less `first`; nothing when none is.
    [[nodiscard]] std::optional<int> chosen(std::string_view options, int first, int count) const;
    /// Leaves none of the options set that were made with `first`; runs no handler.
    void clearOptions(std::string_view options, int first);

    /// `action` runs when the control is clicked, after those that were given before.
    void onClick(const Name& name, Action action);
    /// Runs what a click runs, as other handlers do; raises Failure (OutOfRange) when there is no
    /// such control.
    void run(const Name& name) const;
    /// Makes a procedure NAME_Click of every handler, with the index of an element as argument. To
    /// be called when all controls are there.
    void registerHandlers();

private:
    using Key = std::pair<std::string, int>;
    using Elements = std::map<int, std::vector<Action>>;

    static Key keyOf(const Name& name) { return {std::string(name.name), name.index}; }
    static std::string text(const Name& name);
    template <typename T, typename... Args>
    T& add(const Name& name, Args&&... args);

    forms::Form& form_;
    std::map<Key, forms::OptionGroup> groups_; ///< by their first options
    std::map<Key, std::unique_ptr<forms::Control>> controls_;
    std::map<Key, LabelRow> rows_;
    std::map<std::string, Elements, std::less<>> handlers_;
};

} // namespace bitlux
