#include "platform/forms/form.h"

#include "platform/failure.h"
#include "platform/forms/form_set.h"
#include "platform/forms/near_names.h"
#include "platform/letters.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

namespace bitlux::forms {

namespace {

struct EventName {
    std::string_view suffix;
    ControlEvent event;
    std::size_t arguments; ///< number supplied by the event itself
};

constexpr std::array events{EventName{"Click", ControlEvent::Click, 0},
                            EventName{"DblClick", ControlEvent::DblClick, 0},
                            EventName{"Change", ControlEvent::Change, 0},
                            EventName{"Scroll", ControlEvent::Scroll, 0},
                            EventName{"KeyDown", ControlEvent::KeyDown, 1},
                            EventName{"KeyPress", ControlEvent::KeyPress, 1},
                            EventName{"GotFocus", ControlEvent::GotFocus, 0},
                            EventName{"LostFocus", ControlEvent::LostFocus, 0},
                            EventName{"DragDrop", ControlEvent::DragDrop, 1},
                            EventName{"Timer", ControlEvent::Timer, 0}};

template <typename Map>
std::vector<std::string> namesIn(const Map& map) {
    std::vector<std::string> names;
    for (const auto& [name, thing] : map)
        names.push_back(name);
    return names;
}

} // namespace

Form::Form(FormSet& set, std::string name, std::string caption)
    : set_(set), name_(std::move(name)), caption_(std::move(caption)) {}

void Form::setVisible(bool visible) {
    if (visible_ != visible) {
        visible_ = visible;
        set_.formShown.raise(*this);
    }
    if (visible)
        set_.activate(*this);
    else
        set_.leave(*this);
}

void Form::setFocus(Control& control) {
    if (focus_ == &control)
        return;
    if (Control* before = std::exchange(focus_, &control))
        before->raise(ControlEvent::LostFocus);
    if (focus_ == &control) // the handler may have sent it elsewhere
        control.raise(ControlEvent::GotFocus);
}

void Form::add(Control& control) {
    std::vector<Control*>& sameName = byName_[control.name()];
    for (const Control* other : sameName)
        if (other->index() == control.index() || !other->index() || !control.index())
            throw std::logic_error(fmt::format("{} exists twice", control.fullName()));
    sameName.push_back(&control);
    controls_.push_back(&control);
}

void Form::remove(Control& control) {
    if (focus_ == &control)
        focus_ = nullptr;
    set_.forget(control);
    std::erase(byName_.find(control.name())->second, &control);
    std::erase(controls_, &control);
}

Control& Form::control(std::string_view localName) const {
    const std::string_view name = localName.substr(0, localName.find('('));
    if (const auto found = byName_.find(name); found != byName_.end())
        for (Control* control : found->second)
            if (control->localName() == localName)
                return *control;
    std::vector<std::string> names;
    for (const Control* control : controls_)
        names.push_back(control->localName());
    throw UnknownName(fmt::format("{}.{}", name_, localName), nearNames(localName, names));
}

std::vector<Control*> Form::namedAlike(std::string_view name) const {
    if (const auto found = byName_.find(name); found != byName_.end())
        return found->second;
    std::vector<Control*> alike;
    std::copy_if(controls_.begin(), controls_.end(), std::back_inserter(alike),
                 [name](const Control* any) { return equalIgnoringCase(any->name(), name); });
    return alike;
}

void Form::serve(std::string_view name, const std::shared_ptr<const Procedure>& procedure) {
    const std::size_t line = name.rfind('_');
    if (line == std::string_view::npos)
        return;
    const auto* const found =
        std::find_if(events.begin(), events.end(),
                     [&](const EventName& event) { return event.suffix == name.substr(line + 1); });
    if (found == events.end())
        return;
    const std::vector<Control*> served = namedAlike(name.substr(0, line));
    for (Control* control : served) {
        const std::size_t most = found->arguments + (control->index() ? 1 : 0);
        if (procedure->arity < found->arguments || procedure->arity > most)
            throw std::logic_error(
                fmt::format("{}.{} cannot have {} arguments", name_, name, procedure->arity));
        control->setHandler(found->event, procedure);
    }
    if (served.empty())
        throw std::logic_error(fmt::format("{}.{} has no control", name_, name));
}

void Form::addProcedure(const std::string& name, Procedure procedure) {
    auto shared = std::make_shared<const Procedure>(std::move(procedure));
    serve(name, shared);
    procedures_[name] = std::move(shared);
}

std::vector<std::string> Form::procedures() const {
    return namesIn(procedures_);
}

Value Form::callWith(std::string_view procedure, std::span<const Value> arguments) {
    auto found = procedures_.find(procedure);
    for (const std::string_view ending : {"_Click", "_Timer"})
        if (found == procedures_.end())
            found = procedures_.find(fmt::format("{}{}", procedure, ending));
    if (found == procedures_.end())
        throw UnknownName(fmt::format("{}.{}", name_, procedure),
                          nearNames(procedure, procedures()));
    const std::shared_ptr<const Procedure> called = found->second; // may be replaced meanwhile
    if (called->arity != arguments.size())
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("{}.{} takes {} arguments, not {}", name_, procedure,
                                  called->arity, arguments.size()));
    const FormSet::Running running(set_);
    return called->run(arguments);
}

void Form::callIfThere(std::string_view procedure) {
    if (hasProcedure(procedure))
        callWith(procedure, {});
}

void Form::variable(const std::string& name, std::function<Value()> read,
                    std::function<void(const Value&)> write) {
    variables_[name] = {.read = std::move(read), .write = std::move(write)};
}

std::vector<std::string> Form::variables() const {
    return namesIn(variables_);
}

const Form::Variable& Form::findVariable(std::string_view name) const {
    const auto found = variables_.find(name);
    if (found == variables_.end())
        throw UnknownName(fmt::format("{}.{}", name_, name), nearNames(name, variables()));
    return found->second;
}

Value Form::readVariable(std::string_view name) const {
    return findVariable(name).read();
}

void Form::writeVariable(std::string_view name, const Value& value) {
    const Variable& found = findVariable(name);
    if (!found.write)
        throw Failure(Failure::Kind::Conversion,
                      fmt::format("{}.{} can only be read", name_, name));
    found.write(value);
}

} // namespace bitlux::forms
