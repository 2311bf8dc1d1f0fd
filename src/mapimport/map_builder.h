#pragma once

#include "mapimport/numbers.h"
#include "mapimport/source_map.h"
#include "mapimport/xml_source.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::mapimport {

/// An array of elements: how many, how far apart, and what their names contain.
struct Copies {
    std::uint64_t count = 1;
    std::uint64_t step = 0;
    std::vector<std::string> indices; ///< none for a single element

    /// "CH%s" with index 2 is "CH2", "CH[%s]" and "CH" are "CH_2".
    [[nodiscard]] std::string nameOf(std::string_view name, std::uint64_t place) const;
};

/// What the readers of both standards share: places, numbers, the choice of blocks, and the limits
/// that keep a small file from making an endless map.
class MapBuilder {
public:
    /// Without names in `only` all blocks are wanted. All outlive it.
    MapBuilder(const XmlSource& source, Notation notation, const std::vector<std::string>& only,
               chips::Problems& notes)
        : source_(source), notation_(notation), only_(only), notes_(notes) {}

    SourceMap map;

    void note(pugi::xml_node node, std::string text, std::string advice);
    [[noreturn]] void fail(pugi::xml_node node, std::string text, std::string advice) const;
    [[nodiscard]] chips::Place placeOf(pugi::xml_node node) const { return source_.placeOf(node); }

    /// The text of an element as a number. Raises MapError.
    [[nodiscard]] std::uint64_t number(pugi::xml_node node) const;
    [[nodiscard]] std::optional<Pattern> pattern(pugi::xml_node node) const;
    /// The name of an element; raises MapError when it has none.
    [[nodiscard]] std::string nameOf(pugi::xml_node node) const;
    /// Applies `access` and the elements that define what reads and writes do, where they are
    /// there.
    void apply(pugi::xml_node access, pugi::xml_node write, pugi::xml_node read, Behaviour& to);

    /// Whether a block was chosen; it is remembered for checkChoice().
    bool wants(const std::string& block);
    /// Raises MapError unless each name in `only` is that of a block.
    void checkChoice() const;

    void add(MapRegister added, pugi::xml_node node);
    /// There is no room for another register: a note says so.
    [[nodiscard]] bool isFull() const { return isFull_; }
    /// To be called for each element of an array. Raises MapError when there are too many.
    void countElement(pugi::xml_node node);

private:
    const XmlSource& source_;
    Notation notation_;
    const std::vector<std::string>& only_;
    chips::Problems& notes_;
    std::vector<std::string> blocks_;
    std::size_t elements_ = 0;
    bool isFull_ = false;
};

} // namespace bitlux::mapimport
