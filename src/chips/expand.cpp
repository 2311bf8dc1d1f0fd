#include "chips/document.h"

#include "platform/conversions.h"
#include <algorithm>
#include <map>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr const char* repeatKey = "repeat";
constexpr int longestRange = 64;

/// The numbers of "{first..last}" in a text, and its position.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0; ///< after the closing brace
    int first = 0;
    int last = 0;
};

std::optional<int> wholeNumberIn(std::string_view text) {
    const std::optional<int> number = wholeNumber<int>(text);
    return number && *number >= 0 ? number : std::nullopt;
}

/// The first one from `start` on.
std::optional<Range> countedRangeIn(std::string_view text, std::size_t start = 0) {
    for (std::size_t begin = text.find('{', start); begin != std::string_view::npos;
         begin = text.find('{', begin + 1)) {
        const std::size_t end = text.find('}', begin);
        if (end == std::string_view::npos)
            return std::nullopt;
        const std::string_view inside = text.substr(begin + 1, end - begin - 1);
        const std::size_t dots = inside.find("..");
        if (dots == std::string_view::npos)
            continue;
        const std::optional<int> first = wholeNumberIn(inside.substr(0, dots));
        const std::optional<int> last = wholeNumberIn(inside.substr(dots + 2));
        if (first && last)
            return Range{.begin = begin, .end = end + 1, .first = *first, .last = *last};
    }
    return std::nullopt;
}

/// The first "{name}" in a text.
std::optional<std::string_view> placeholderIn(std::string_view text) {
    const auto isLetter = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    };
    for (std::size_t begin = text.find('{'); begin != std::string_view::npos;
         begin = text.find('{', begin + 1)) {
        const std::size_t end = text.find('}', begin);
        const std::string_view name = text.substr(begin + 1, end - begin - 1);
        if (end != std::string_view::npos && !name.empty() &&
            std::all_of(name.begin(), name.end(), isLetter))
            return name;
    }
    return std::nullopt;
}

/// The elements of the lists of a `repeat` at one position.
using Values = std::map<std::string, const Node*, std::less<>>;

/// The number of nodes of a node, including itself.
std::size_t weightOf(const Node& node) {
    constexpr std::size_t lengthOfOne = 16;
    std::size_t weight = 1;
    if (const std::string* text = node.text())
        weight += text->size() / lengthOfOne;
    else if (const Node::List* list = node.list())
        for (const Node& element : *list)
            weight += weightOf(element);
    else if (const Node::Table* table = node.table())
        for (const auto& [key, value] : *table)
            weight += weightOf(value);
    return weight;
}

std::string plain(const Node& value) {
    if (const std::string* text = value.text())
        return *text;
    if (const std::int64_t* number = value.number())
        return fmt::format("{}", *number);
    return {};
}

class Expander {
public:
    Expander(std::size_t most, Problems& problems) : most_(most), problems_(problems) {}

    void expand(Node& node) {
        if (tooMany(node))
            return;
        if (auto* table = std::get_if<Node::Table>(&node.value)) {
            for (auto& [key, value] : *table) {
                if (value.text() != nullptr && countedRangeIn(*value.text()))
                    problems_.push_back({value.at,
                                         "a range of numbers is given where one text is expected",
                                         "Put it into a list, as [\"SG{0..15}\"]."});
                expand(value);
            }
        } else if (auto* list = std::get_if<Node::List>(&node.value)) {
            *list = expanded(std::move(*list));
        }
    }

private:
    bool tooMany(const Node& node, std::size_t weight = 1) {
        if (count_ > most_)
            return true;
        count_ += weight;
        if (count_ > most_)
            problems_.push_back({node.at, "the file says too much once it is written out",
                                 "Repeat less, or part the chip into several files."});
        return count_ > most_;
    }

    Node::List expanded(Node::List elements) {
        Node::List made;
        made.reserve(elements.size());
        for (Node& element : elements) {
            if (element.text() != nullptr) {
                addTexts(element, made);
            } else if (element.find(repeatKey) != nullptr) {
                ++nesting_;
                addRepeated(element, made);
                --nesting_;
            } else {
                expand(element);
                made.push_back(std::move(element));
            }
        }
        return made;
    }

    void addTexts(const Node& element, Node::List& made) {
        const std::string& text = *element.text();
        const std::optional<Range> range = countedRangeIn(text);
        if (!range) {
            made.push_back(element);
            return;
        }
        if (range->last < range->first || range->last - range->first >= longestRange) {
            problems_.push_back(
                {element.at,
                 fmt::format("\"{}\" is no range of up to {} numbers", text, longestRange),
                 "Write the lower number first."});
            return;
        }
        if (countedRangeIn(text, range->end))
            problems_.push_back(
                {element.at, fmt::format("\"{}\" has two ranges", text), "Write one of them out."});
        for (int number = range->first; number <= range->last && !tooMany(element); ++number) {
            Node one = element;
            one.value =
                text.substr(0, range->begin) + std::to_string(number) + text.substr(range->end);
            made.push_back(std::move(one));
        }
    }

    void addRepeated(Node& element, Node::List& made) {
        auto& entries = std::get<Node::Table>(element.value);
        const auto found =
            std::find_if(entries.begin(), entries.end(),
                         [](const Node::Entry& entry) { return entry.key == repeatKey; });
        Node repeat = std::move(found->value);
        entries.erase(found);
        expand(repeat); // its lists may contain ranges
        const std::optional<std::size_t> times = timesOf(repeat);
        if (!times)
            return;
        const std::size_t weight = weightOf(element);
        for (std::size_t i = 0; i < *times; ++i) {
            Values values;
            std::size_t added = 0;
            for (const auto& [key, list] : *repeat.table()) {
                values.emplace(key, &(*list.list())[i]);
                added += weightOf((*list.list())[i]);
            }
            if (tooMany(element, weight * (1 + added))) // before memory is allocated
                return;
            Node one = element;
            fill(one, values);
            expand(one);
            if (nesting_ == 1 && i == 0)
                findUnfilled(one);
            made.push_back(std::move(one));
        }
    }

    /// Reports keys that no surrounding `repeat` has filled.
    void findUnfilled(const Node& node) {
        if (node.text() != nullptr) {
            if (const std::optional<std::string_view> name = placeholderIn(*node.text()))
                problems_.push_back({node.at,
                                     fmt::format("no list of `repeat` is called `{}`", *name),
                                     "Name one of its lists between the braces."});
        } else if (node.list() != nullptr) {
            for (const Node& element : *node.list())
                findUnfilled(element);
        } else if (node.table() != nullptr) {
            for (const auto& [key, value] : *node.table())
                findUnfilled(value);
        }
    }

    /// The number of repetitions of a `repeat`; nothing when it is invalid.
    std::optional<std::size_t> timesOf(const Node& repeat) {
        std::optional<std::size_t> times;
        bool good = repeat.table() != nullptr && !repeat.table()->empty();
        if (good)
            for (const auto& [key, list] : *repeat.table()) {
                good = good && list.list() != nullptr && !list.list()->empty() &&
                       (!times || *times == list.list()->size());
                if (good)
                    times = list.list()->size();
            }
        if (good)
            return times;
        problems_.push_back({repeat.at, "`repeat` wants lists that are equally long",
                             R"(Write it as { n = [0, 1], name = ["A", "B"] }.)"});
        return std::nullopt;
    }

    static void fill(Node& node, const Values& values) {
        if (auto* text = std::get_if<std::string>(&node.value)) {
            fillText(node, std::string(*text), values);
        } else if (auto* list = std::get_if<Node::List>(&node.value)) {
            for (Node& element : *list)
                fill(element, values);
        } else if (auto* table = std::get_if<Node::Table>(&node.value)) {
            for (auto& [key, value] : *table)
                fill(value, values);
        }
    }

    /// A text that consists of a single key becomes the value itself, which may be a number or a
    /// list.
    static void fillText(Node& node, const std::string& text, const Values& values) {
        std::string filled;
        std::size_t done = 0;
        while (done < text.size()) {
            const std::size_t open = text.find('{', done);
            const std::size_t close = text.find('}', open);
            if (open == std::string::npos || close == std::string::npos)
                break;
            const auto found = values.find(text.substr(open + 1, close - open - 1));
            if (found != values.end() && open == 0 && close + 1 == text.size()) {
                node.value = found->second->value;
                return;
            }
            filled += text.substr(done, open - done);
            filled +=
                found != values.end() ? plain(*found->second) : text.substr(open, close - open + 1);
            done = close + 1;
        }
        node.value = filled + text.substr(done);
    }

    std::size_t most_;
    Problems& problems_;
    std::size_t count_ = 0;
    int nesting_ = 0; ///< of repeated tables
};

} // namespace

void expand(Node& document, std::size_t most, Problems& problems) {
    Expander(most, problems).expand(document);
}

} // namespace bitlux::chips
