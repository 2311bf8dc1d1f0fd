#include "mapimport/svd_element.h"

#include <algorithm>
#include <set>
#include <string>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr std::uint64_t mostElementCopies = 65'536;

/// Whether an element can be named in a path; containers such as `registers` cannot.
bool hasPlace(std::string_view kind) {
    return kind == "peripheral" || kind == "cluster" || kind == "register" || kind == "field" ||
           kind == "enumeratedValues";
}

/// The name of an element as others refer to it: with or without the mark of an array.
bool isCalled(pugi::xml_node node, std::string_view wanted) {
    const std::string_view name = textOf(childOf(node, "name"));
    if (name == wanted)
        return true;
    const std::size_t mark =
        name.find("[%s]") != std::string_view::npos ? name.find("[%s]") : name.find("%s");
    return mark != std::string_view::npos && name.substr(0, mark) == wanted;
}

// NOLINTBEGIN(misc-no-recursion): no deeper than the source may be

/// The element of a kind at the end of a path of names below `scope`; none when it is not there.
pugi::xml_node below(pugi::xml_node scope, std::string_view path, std::string_view kind) {
    const std::size_t dot = path.find('.');
    for (const pugi::xml_node& child : scope.children()) {
        const std::string_view childKind = localName(child);
        pugi::xml_node found;
        if (!hasPlace(childKind)) {
            if (child.first_child().type() == pugi::node_element)
                found = below(child, path, kind);
        } else if (dot == std::string_view::npos) {
            if (childKind == kind && isCalled(child, path))
                return child;
        } else if (isCalled(child, path.substr(0, dot))) {
            found = below(child, path.substr(dot + 1), kind);
        }
        if (found)
            return found;
    }
    return {};
}

// NOLINTEND(misc-no-recursion)

/// What an element is derived from: near it first, then further up.
pugi::xml_node baseOf(pugi::xml_node node, std::string_view path) {
    for (pugi::xml_node scope = node.parent(); scope; scope = scope.parent())
        if (const pugi::xml_node found = below(scope, path, localName(node)); found)
            return found;
    return {};
}

std::vector<std::string> partsOf(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        std::string part(text.substr(0, comma));
        part.erase(std::remove_if(part.begin(), part.end(),
                                  [](char c) { return c == ' ' || c == '\t' || c == '\n'; }),
                   part.end());
        parts.push_back(std::move(part));
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    return parts;
}

/// "3-6", "A-D" or "A,B,C"; other texts give none.
std::vector<std::string> indicesFrom(std::string_view text) {
    const std::size_t dash = text.find('-');
    if (dash == std::string_view::npos || text.find(',') != std::string_view::npos)
        return partsOf(text);
    std::vector<std::string> indices;
    const std::string_view first = text.substr(0, dash);
    const std::string_view last = text.substr(dash + 1);
    const auto isLetter = [](std::string_view part) {
        return part.size() == 1 && (part.front() | ' ') >= 'a' && (part.front() | ' ') <= 'z';
    };
    if (isLetter(first) && isLetter(last)) {
        for (char letter = first.front(); letter <= last.front(); ++letter)
            indices.emplace_back(1, letter);
        return indices;
    }
    const auto from = numberFrom(first, Notation::Svd);
    const auto to = numberFrom(last, Notation::Svd);
    if (from && to && *from <= *to && *to - *from < mostElementCopies)
        for (std::uint64_t index = *from; index <= *to; ++index)
            indices.push_back(std::to_string(index));
    return indices;
}

} // namespace

SvdElement::SvdElement(pugi::xml_node node, const MapBuilder& builder) : chain_{node} {
    for (pugi::xml_node last = node;;) {
        const std::string_view path = last.attribute("derivedFrom").value();
        if (path.empty())
            return;
        const pugi::xml_node base = baseOf(last, path);
        if (!base)
            builder.fail(last,
                         fmt::format("there is no {} \"{}\" to derive from", localName(last), path),
                         "Correct `derivedFrom`.");
        if (std::find(chain_.begin(), chain_.end(), base) != chain_.end())
            builder.fail(last, fmt::format("\"{}\" is derived from itself", path),
                         "Break the loop of `derivedFrom`.");
        constexpr std::size_t longestChain = 32;
        if (chain_.size() == longestChain)
            builder.fail(last, "more than 32 elements are derived from each other in a row",
                         "Derive them from the first one.");
        chain_.push_back(base);
        last = base;
    }
}

pugi::xml_node SvdElement::find(std::string_view name) const {
    for (const pugi::xml_node& node : chain_)
        if (const pugi::xml_node found = childOf(node, name); found)
            return found;
    return {};
}

std::vector<pugi::xml_node> SvdElement::list(std::string_view container, std::string_view kind,
                                             std::string_view otherKind) const {
    std::vector<pugi::xml_node> found;
    std::set<std::string_view> replaced;
    for (const pugi::xml_node& node : chain_) {
        std::vector<std::string_view> names;
        for (const pugi::xml_node& child :
             (container.empty() ? node : childOf(node, container)).children()) {
            const std::string_view childKind = localName(child);
            if (childKind != kind && (otherKind.empty() || childKind != otherKind))
                continue;
            const std::string_view name = textOf(childOf(child, "name"));
            if (replaced.find(name) == replaced.end())
                found.push_back(child);
            names.push_back(name);
        }
        replaced.insert(names.begin(), names.end());
    }
    return found;
}

Copies copiesOf(pugi::xml_node node, MapBuilder& builder) {
    Copies copies;
    const pugi::xml_node dim = childOf(node, "dim");
    if (!dim)
        return copies;
    copies.count = builder.number(dim);
    if (copies.count == 0 || copies.count > mostElementCopies)
        builder.fail(dim, "an array has 1 to 65,536 elements", "Correct `dim`.");
    if (const pugi::xml_node step = childOf(node, "dimIncrement"); step)
        copies.step = builder.number(step);
    const pugi::xml_node index = childOf(node, "dimIndex");
    copies.indices = indicesFrom(textOf(index));
    if (index && copies.indices.size() != copies.count)
        builder.note(index,
                     fmt::format("`dimIndex` has {} names for {} elements", copies.indices.size(),
                                 copies.count),
                     "They are counted from 0 instead.");
    if (copies.indices.size() == copies.count)
        return copies;
    copies.indices.clear();
    for (std::uint64_t place = 0; place < copies.count; ++place)
        copies.indices.push_back(std::to_string(place));
    return copies;
}

} // namespace bitlux::mapimport
