#include "mapimport/map_builder.h"

#include "chips/chip_reader.h"
#include "platform/forms/near_names.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::mapimport {

namespace {

constexpr std::size_t mostElements = 200'000;

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

} // namespace

bool Behaviour::setAccess(std::string_view text) {
    const std::string access = lowerCase(text);
    const bool reads =
        access == "read-only" || access == "read-write" || access == "read-writeonce";
    const bool writes = access == "write-only" || access == "writeonce" || access == "read-write" ||
                        access == "read-writeonce";
    if (!reads && !writes)
        return false;
    readable = reads;
    writable = writes;
    return true;
}

bool Behaviour::setWrite(std::string_view text) {
    constexpr std::array<std::string_view, 9> known{"oneToClear",  "oneToSet",  "oneToToggle",
                                                    "zeroToClear", "zeroToSet", "zeroToToggle",
                                                    "clear",       "set",       "modify"};
    if (std::find(known.begin(), known.end(), text) == known.end())
        return false;
    write = text == known.front()  ? Write::OneClears
            : text == known.back() ? Write::Sets // a write writes: nothing special
                                   : Write::Other;
    writeName = text;
    return true;
}

std::string Copies::nameOf(std::string_view name, std::uint64_t place) const {
    const std::string index = indices.empty() ? "" : indices.at(place);
    std::string made(name);
    for (const std::string_view mark : {"[%s]", "%s"})
        if (const std::size_t at = made.find(mark); at != std::string::npos)
            return made.replace(at, mark.size(),
                                mark.size() > 2 && !index.empty() ? "_" + index : index);
    return index.empty() ? made : made + "_" + index;
}

void MapBuilder::note(pugi::xml_node node, std::string text, std::string advice) {
    notes_.push_back({placeOf(node), std::move(text), std::move(advice)});
}

void MapBuilder::fail(pugi::xml_node node, std::string text, std::string advice) const {
    throw MapError({placeOf(node), std::move(text), std::move(advice)});
}

std::uint64_t MapBuilder::number(pugi::xml_node node) const {
    if (const std::optional<std::uint64_t> number = numberFrom(textOf(node), notation_))
        return *number;
    fail(node, fmt::format("`{}` is no number: \"{}\"", localName(node), textOf(node)),
         "Write it as 64 or 0x40.");
}

std::optional<Pattern> MapBuilder::pattern(pugi::xml_node node) const {
    return patternFrom(textOf(node), notation_);
}

std::string MapBuilder::nameOf(pugi::xml_node node) const {
    const std::string_view name = textOf(childOf(node, "name"));
    if (name.empty())
        fail(node, fmt::format("`{}` has no name", localName(node)), "Give it a `name`.");
    return std::string(name);
}

void MapBuilder::apply(pugi::xml_node access, pugi::xml_node write, pugi::xml_node read,
                       Behaviour& to) {
    if (access && !to.setAccess(textOf(access)))
        note(access, fmt::format("\"{}\" is no access that is known", textOf(access)),
             "It is left out.");
    if (write && !to.setWrite(textOf(write)))
        note(write, fmt::format("\"{}\" is no effect of a write that is known", textOf(write)),
             "It is left out.");
    if (!textOf(read).empty())
        to.readChanges = true;
}

bool MapBuilder::wants(const std::string& block) {
    if (std::find(blocks_.begin(), blocks_.end(), block) == blocks_.end())
        blocks_.push_back(block);
    return only_.empty() || std::any_of(only_.begin(), only_.end(), [&](const auto& name) {
               return lowerCase(name) == lowerCase(block);
           });
}

void MapBuilder::checkChoice() const {
    for (const std::string& name : only_) {
        const bool isThere = std::any_of(blocks_.begin(), blocks_.end(), [&](const auto& block) {
            return lowerCase(name) == lowerCase(block);
        });
        if (isThere)
            continue;
        std::vector<std::string> near = forms::nearNames(name, blocks_);
        constexpr std::size_t most = 20;
        if (near.empty())
            near.assign(blocks_.begin(), blocks_.begin() + static_cast<std::ptrdiff_t>(
                                                               std::min(blocks_.size(), most)));
        throw MapError({{},
                        fmt::format("there is no peripheral or address block \"{}\"", name),
                        fmt::format("There is {}.", fmt::join(near, ", "))});
    }
}

void MapBuilder::add(MapRegister added, pugi::xml_node node) {
    if (isFull_)
        return;
    if (map.registers.size() == chips::mostRegisters) {
        isFull_ = true;
        note(node,
             fmt::format("the registers from \"{}\" on are left out: a chip's file has up to {}",
                         added.name, chips::mostRegisters),
             "Choose peripherals with --only.");
        return;
    }
    map.registers.push_back(std::move(added));
}

void MapBuilder::countElement(pugi::xml_node node) {
    if (++elements_ > mostElements)
        fail(node, fmt::format("the file means more than {} elements", mostElements),
             "Choose peripherals with --only, or make its arrays smaller.");
}

} // namespace bitlux::mapimport
