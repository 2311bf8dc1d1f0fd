#include "mapimport/xml_source.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr std::ptrdiff_t mostParts = 4'000'000;
constexpr int mostElementDepth = 64;

[[noreturn]] void refuse(const chips::Place& at, std::string text, std::string advice) {
    throw MapError({at, std::move(text), std::move(advice)});
}

/// Elements and attributes take far more memory than text does.
void checkSize(std::string_view text) {
    if (text.size() > longestSource)
        refuse({}, "the file is longer than 64 MiB", "Part it into several files.");
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        refuse({.line = 1, .column = 1}, "the file is in UTF-16", "Save it in UTF-8.");
    const std::ptrdiff_t parts =
        std::count_if(text.begin(), text.end(), [](char c) { return c == '<' || c == '='; });
    if (parts > mostParts)
        refuse({}, "the file has more than 4 million elements and attributes",
               "Part it into several files.");
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

} // namespace

XmlSource::XmlSource(std::string_view text) {
    checkSize(text);
    lines_.push_back(0);
    for (std::size_t end = text.find('\n'); end != std::string_view::npos;
         end = text.find('\n', end + 1))
        lines_.push_back(end + 1);
    const pugi::xml_parse_result result =
        document_.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        std::string reason = result.description();
        reason.front() =
            static_cast<char>(std::tolower(static_cast<unsigned char>(reason.front())));
        refuse(placeAt(static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0))),
               fmt::format("this is no XML: {}", reason),
               "Correct the file at this place, or export it again.");
    }
    checkDepth();
}

void XmlSource::checkDepth() const {
    int depth = 0;
    for (pugi::xml_node node = root(); !node.empty();) {
        if (depth > mostElementDepth)
            refuse(placeOf(node), "the elements lie too deep in each other",
                   "A register map has them up to 64 deep.");
        if (!node.first_child().empty()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (depth > 0 && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        node = depth > 0 ? node.next_sibling() : pugi::xml_node();
    }
}

chips::Place XmlSource::placeOf(pugi::xml_node node) const {
    const std::ptrdiff_t offset = node.offset_debug(); // of the name, after the bracket
    return placeAt(static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset - 1, 0)));
}

chips::Place XmlSource::placeAt(std::size_t offset) const {
    const auto next = std::upper_bound(lines_.begin(), lines_.end(), offset);
    return {.line = static_cast<int>(next - lines_.begin()),
            .column = static_cast<int>(offset - *(next - 1)) + 1};
}

std::string_view localName(pugi::xml_node node) {
    const std::string_view name = node.name();
    return name.substr(name.find(':') + 1); // npos + 1 is 0
}

pugi::xml_node childOf(pugi::xml_node node, std::string_view name) {
    for (const pugi::xml_node& child : node.children())
        if (localName(child) == name)
            return child;
    return {};
}

std::string_view textOf(pugi::xml_node node) {
    std::string_view text = node.text().get();
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace bitlux::mapimport
