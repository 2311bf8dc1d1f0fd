#include "mapimport/field_values.h"

#include "mapimport/titles.h"

#include <algorithm>
#include <bit>
#include <map>
#include <set>
#include <string>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr std::size_t longestText = 80;
constexpr int mostEitherBits = 4; ///< up to 16 codes are written out
constexpr int widestWithRest = 4; ///< bits of a field whose other values are written out

class ValueFitter {
public:
    ValueFitter(const MapField& field, int width, chips::Problems& notes)
        : field_(field),
          largest_(chips::BitList::range(0, width).largest()),
          width_(width),
          notes_(notes) {}

    std::vector<chips::Choice> run() {
        for (const MapValue& value : field_.values)
            if (!value.isDefault)
                take(value);
        for (const MapValue& value : field_.values)
            if (value.isDefault)
                takeRest(value);
        if (texts_.size() == 1) // a choice has at least two
            texts_.emplace(texts_.begin()->first == 0 ? 1 : 0,
                           texts_.begin()->first == 0 ? "1" : "0");
        return choices();
    }

private:
    void take(const MapValue& value) {
        const std::string text = textOf(value);
        if ((value.value & ~largest_) != 0)
            return note(value, fmt::format("the value {} of \"{}\" is left out", value.value, text),
                        fmt::format("The field \"{}\" has {} bits.", field_.name, width_));
        const std::uint64_t either = value.either & largest_;
        if (std::popcount(either) > mostEitherBits)
            return note(value,
                        fmt::format("\"{}\" means more than 16 values, and is left out", text),
                        "Describe it in a note.");
        std::uint64_t part = 0; // runs through all values of the bits in `either`
        do {
            add(value.value | part, text);
            part = (part - either) & either;
        } while (part != 0);
    }

    /// All values without a name.
    void takeRest(const MapValue& value) {
        if (width_ > widestWithRest)
            return note(value,
                        fmt::format(R"("{}" means all other values of "{}", and is left out)",
                                    textOf(value), field_.name),
                        "Describe it in a note.");
        for (std::uint64_t code = 0; code <= largest_; ++code)
            if (texts_.find(code) == texts_.end())
                texts_.emplace(code, textOf(value));
    }

    /// Reads and writes of one value may have different names.
    void add(std::uint64_t code, const std::string& text) {
        const auto [known, isNew] = texts_.emplace(code, text);
        if (!isNew && known->second != text && known->second.find(" / ") == std::string::npos)
            known->second += " / " + text;
    }

    [[nodiscard]] std::vector<chips::Choice> choices() const {
        std::map<std::string, int> uses;
        for (const auto& [code, text] : texts_)
            ++uses[text];
        std::set<std::string> taken;
        std::vector<chips::Choice> all;
        for (const auto& [code, text] : texts_) {
            std::string unique = uses[text] > 1 ? fmt::format("{} ({})", text, code) : text;
            while (!taken.insert(unique).second)
                unique += "_";
            all.push_back({.text = std::move(unique), .code = code});
        }
        return all;
    }

    std::string textOf(const MapValue& value) {
        bool isChanged = false;
        std::string text =
            cleanText(value.name.empty() ? value.description : value.name, longestText, isChanged);
        std::replace(text.begin(), text.end(), '{', '(');
        std::replace(text.begin(), text.end(), '}', ')');
        if (isChanged)
            note(value, fmt::format("the text of a value became \"{}\"", text),
                 "It was too long, or had characters that cannot be shown.");
        return text.empty() ? fmt::format("{}", value.value) : text;
    }

    void note(const MapValue& value, std::string text, std::string advice) {
        notes_.push_back({value.at, std::move(text), std::move(advice)});
    }

    const MapField& field_;
    std::uint64_t largest_;
    int width_;
    chips::Problems& notes_;
    std::map<std::uint64_t, std::string> texts_; ///< by code
};

} // namespace

std::vector<chips::Choice> choicesOf(const MapField& field, int width, chips::Problems& notes) {
    return ValueFitter(field, width, notes).run();
}

} // namespace bitlux::mapimport
