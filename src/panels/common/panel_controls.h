#pragma once

#include "chips/description.h"
#include "panels/common/label_row.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/unknown_name.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux {

/// Name of a control, or of an element of a control array, as written in code. Valid only during a
/// call.
struct ControlRef {
    // NOLINTBEGIN(google-explicit-constructor): all of them are names
    constexpr ControlRef(std::string_view control, int element = -1)
        : name(control), index(element) {}
    constexpr ControlRef(const char* control, int element = -1) : name(control), index(element) {}
    ControlRef(const std::string& control) : name(control), index(-1) {}
    ControlRef(const chips::ControlName& control) : name(control.name), index(control.index) {}
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] ControlRef operator+(int further) const { return {name, index + further}; }

    std::string_view name;
    int index;
};

/// The controls that a panel makes from the description of its chip, and what a click on them runs.
class PanelControls {
public:
    using Name = ControlRef;
    using Texts = std::vector<std::string>;
    using Action = std::function<void()>;

    /// The form outlives this.
    explicit PanelControls(forms::Form& form) : form_(form) {}
    PanelControls(const PanelControls&) = delete;
    PanelControls& operator=(const PanelControls&) = delete;

    /// Makes a control whose behaviour a part defines.
    void add(const chips::OwnControl& described);
    // Each makes a control with a new name.
    forms::Label& addLabel(const Name& name, std::string_view caption);
    forms::Button& addButton(const Name& name, std::string_view caption);
    forms::CheckBox& addBox(const Name& name, std::string_view caption);
    forms::TextBox& addEntry(const Name& name);
    forms::ScrollBar& addBar(const Name& name, int least, int most);
    forms::Frame& addFrame(const Name& name, std::string_view caption);
    forms::ComboBox& addCombo(const Name& name, forms::ComboBox::Style style, Texts items);
    /// Buttons `first` and following, of which at most one is set.
    void addOptions(const Name& first, const Texts& captions);
    /// Labels that show zeros. Makes nothing for an existing row.
    const LabelRow& addRow(const chips::Row& row);

    /// Null if there is none.
    [[nodiscard]] forms::Control* find(const Name& name) const;
    /// The control as its kind; raises UnknownName.
    template <typename T>
    T& get(const Name& name) const {
        auto* typed = dynamic_cast<T*>(find(name));
        if (typed == nullptr)
            throw forms::UnknownName(text(name), {});
        return *typed;
    }
    /// An existing row; raises UnknownName.
    [[nodiscard]] const LabelRow& row(const Name& first) const;
    /// The tooltips of controls, as "0x0100, 0x0B00".
    [[nodiscard]] std::string tooltips(const std::vector<chips::ControlName>& names) const;
    /// Which of `count` options from `first` on is set; nothing when none is.
    [[nodiscard]] std::optional<int> chosen(const Name& first, int count) const;
    /// Clears all options of the group that begins with `first`; runs no handler.
    void clearOptions(const Name& first);

    /// `action` runs when the control is clicked, after those added before.
    void onClick(const Name& name, Action action);
    /// `action` runs when a text is typed into a list; `name` is not an element.
    void onType(const Name& name, Action action);
    /// `action` is a procedure of the form.
    void onCall(const std::string& procedure, Action action) {
        form_.procedure(procedure, std::move(action));
    }
    /// Runs the handlers of a click, for other handlers; raises Failure (OutOfRange) when there is
    /// no such control.
    void run(const Name& name) const;
    /// Makes a procedure NAME_Click of every handler, with the index of an element as argument, and
    /// NAME_Change where texts are typed. To be called when all controls exist.
    void registerHandlers();

private:
    using Key = std::pair<std::string, int>;
    using Elements = std::map<int, std::vector<Action>>;

    static Key keyOf(const Name& name) { return {std::string(name.name), name.index}; }
    static std::string text(const Name& name);
    template <typename T, typename... Args>
    T& make(const Name& name, Args&&... args);

    forms::Form& form_;
    std::map<Key, forms::OptionGroup> groups_; ///< by their first options
    std::map<Key, std::unique_ptr<forms::Control>> controls_;
    std::map<Key, LabelRow> rows_;
    std::map<std::string, Elements, std::less<>> handlers_;
    std::map<std::string, Action> typing_;
};

} // namespace bitlux
