#pragma once

#include "chips/problem.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

/// Register maps that other tools have written, as chip files: IP-XACT (IEEE 1685 of 2009 and 2014)
/// and CMSIS-SVD. The files are not trusted.
namespace bitlux::mapimport {

/// Why a file cannot be imported.
class MapError : public std::runtime_error {
public:
    explicit MapError(chips::Problem problem)
        : std::runtime_error(problem.text), problem_(std::move(problem)) {}

    [[nodiscard]] const chips::Problem& problem() const noexcept { return problem_; }

private:
    chips::Problem problem_;
};

inline constexpr std::size_t longestSource = std::size_t{64} << 20; ///< bytes

/// A parsed XML text that knows the place of each element. Entities that the text declares stay
/// what they are, and nothing outside of the text is read.
class XmlSource {
public:
    /// Raises MapError for a text that is too long, is no XML, has more than 4 million elements and
    /// attributes, or elements that lie more than 64 deep in each other.
    explicit XmlSource(std::string_view text);

    [[nodiscard]] pugi::xml_node root() const { return document_.document_element(); }
    [[nodiscard]] chips::Place placeOf(pugi::xml_node node) const;

private:
    [[nodiscard]] chips::Place placeAt(std::size_t offset) const;
    void checkDepth() const;

    pugi::xml_document document_;
    std::vector<std::size_t> lines_; ///< where each begins
};

/// The name of an element without the prefix of its namespace.
std::string_view localName(pugi::xml_node node);
/// The first child with this local name; an empty node when there is none.
pugi::xml_node childOf(pugi::xml_node node, std::string_view name);
/// The text of an element, without blanks around it.
std::string_view textOf(pugi::xml_node node);

} // namespace bitlux::mapimport
