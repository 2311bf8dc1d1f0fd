#include "registers/register_catalog.h"

#include "registers/names.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

using chips::Operation;
using chips::Register;
using chips::View;

/// The view that reads what a write sets; null when there is none.
const View* valueViewOf(const Register& of) {
    const auto found = std::find_if(of.views.begin(), of.views.end(), [&of](const View& any) {
        return any.operation == Operation::Read && !any.reset && any.address == of.address &&
               any.extra == 0;
    });
    return found == of.views.end() ? nullptr : &*found;
}

/// A title such as "Read" does not distinguish views, its group does.
std::string nameOf(const Register& owner, const View& view) {
    if (!comparedName(view.title).starts_with("read"))
        return view.title.substr(0, view.title.find_last_not_of(' ') + 1);
    if (!view.group.empty())
        return view.group;
    return owner.title + " " + view.title;
}

} // namespace

std::uint64_t RegisterItem::mask() const {
    return chips::BitList::range(0, width).mask();
}

std::uint64_t RegisterItem::reset() const {
    return isRegister ? owner->reset : view->reset.value_or(view->ownValue() ? 0 : owner->reset);
}

std::string RegisterItem::hexOf(std::uint64_t value) const {
    constexpr int bitsOfDigit = 4;
    return fmt::format("{:0{}X}", value, std::max(1, (width + bitsOfDigit - 1) / bitsOfDigit));
}

bool RegisterItem::hasField(std::string_view wanted) const {
    return std::any_of(fields.begin(), fields.end(),
                       [wanted](const NamedField& any) { return isSameName(any.name, wanted); });
}

const NamedField& RegisterItem::field(std::string_view wanted, std::uint64_t value) const {
    const NamedField* found = nullptr;
    std::vector<std::string> names;
    for (const NamedField& any : fields) {
        names.push_back(any.name);
        if (isSameName(any.name, wanted) && (found == nullptr || !found->appliesTo(value)))
            found = &any;
    }
    if (found == nullptr)
        throw unknownName("field of " + name, wanted, names);
    return *found;
}

std::string RegisterItem::summaryOf(std::uint64_t value) const {
    std::string text;
    for (const NamedField& any : fields) {
        const std::uint64_t code = any.bits.taken(value);
        const bool isFlag = any.bits.size() == 1 && any.textOf(0).empty() && any.textOf(1).empty();
        if (!any.appliesTo(value) || (isFlag && code == 0))
            continue;
        if (!text.empty())
            text += ", ";
        text += any.name;
        if (!isFlag)
            text.append(" = ").append(any.shortTextOf(code));
    }
    return text;
}

RegisterCatalog::RegisterCatalog(chips::ChipPtr chip) : chip_(std::move(chip)) {
    for (const Register& any : chip_->registers)
        addRegister(any);
}

void RegisterCatalog::addRegister(const Register& added) {
    const View* value = valueViewOf(added);
    if (value != nullptr || added.writable())
        items_.push_back({.name = added.title,
                          .owner = &added,
                          .view = value,
                          .isRegister = true,
                          .width = added.width(),
                          .fields = fieldsOf(added)});
    for (const View& view : added.views)
        if (&view != value && !isRead(view))
            addView(added, view);
}

void RegisterCatalog::addView(const Register& owner, const View& view) {
    items_.push_back({.name = freeNameFor(owner, view),
                      .owner = &owner,
                      .view = &view,
                      .isRegister = false,
                      .width = view.row.width(),
                      .fields = bitsOf(view.row.captions)});
}

/// A companion form shows views of the panel once more.
bool RegisterCatalog::isRead(const View& view) const {
    return std::any_of(items_.begin(), items_.end(), [&view](const RegisterItem& any) {
        return any.view != nullptr && any.view->operation == view.operation &&
               any.view->address == view.address && any.view->extra == view.extra;
    });
}

std::string RegisterCatalog::freeNameFor(const Register& owner, const View& view) const {
    const bool isAlone = !owner.writable() && owner.views.size() == 1;
    std::string base = isAlone ? owner.title : nameOf(owner, view);
    if (isTaken(base, owner, isAlone) && !view.group.empty() && view.group != base)
        base += ", " + view.group;
    std::string name = base;
    constexpr int second = 2;
    for (int number = second; isTaken(name, owner, isAlone); ++number)
        name = fmt::format("{} {}", base, number);
    return name;
}

/// By an item, or by a register that comes later. A register that is only its view has its title.
bool RegisterCatalog::isTaken(const std::string& name, const Register& owner, bool isAlone) const {
    return std::any_of(items_.begin(), items_.end(),
                       [&](const RegisterItem& any) { return isSameName(any.name, name); }) ||
           std::any_of(chip_->registers.begin(), chip_->registers.end(), [&](const Register& any) {
               return (&any != &owner || !isAlone) && isSameName(any.title, name);
           });
}

const RegisterItem* RegisterCatalog::find(std::string_view wanted) const {
    const std::string compared = comparedName(wanted);
    for (const RegisterItem& any : items_)
        if (comparedName(any.name) == compared)
            return &any;
    for (const RegisterItem& any : items_)
        if (!any.isRegister && comparedName(any.view->row.first.name) == compared)
            return &any;
    return nullptr;
}

const RegisterItem& RegisterCatalog::item(std::string_view wanted) const {
    if (const RegisterItem* found = find(wanted))
        return *found;
    throw unknownName("register", wanted, names());
}

std::vector<std::string> RegisterCatalog::names() const {
    std::vector<std::string> names;
    for (const RegisterItem& any : items_)
        names.push_back(any.name);
    return names;
}

} // namespace bitlux
