#include "mapimport/chip_writer.h"

#include "chips/chip_reader.h"
#include "platform/printable.h"

#include <algorithm>
#include <array>
#include <bit>
#include <filesystem>
#include <limits>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::mapimport {

namespace {

/// As a string of TOML; the text has no control characters.
std::string tomlString(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

std::string hexNumber(std::uint64_t number) {
    const bool isText = number > std::numeric_limits<std::int64_t>::max();
    return isText ? fmt::format("\"0x{:X}\"", number) : fmt::format("0x{:X}", number);
}

/// Bits as one number, or as text.
std::string bitsText(int first, int width) {
    return width == 1 ? fmt::format("{}", first)
                      : fmt::format("\"{}:{}\"", first + width - 1, first);
}

std::string_view accessName(chips::Access access) {
    constexpr std::array<std::string_view, 5> names{"read write", "read only", "write only",
                                                    "read clears", "write one clears"};
    return names.at(static_cast<std::size_t>(access));
}

/// Lines of "key = value" with the indent of a table.
class Lines {
public:
    Lines(std::string& text, std::string_view indent) : text_(text), indent_(indent) {}

    void add(std::string_view key, std::string_view value) {
        text_ += fmt::format("{}{} = {}\n", indent_, key, value);
    }
    void addText(std::string_view key, std::string_view value) {
        if (!value.empty())
            add(key, tomlString(value));
    }

private:
    std::string& text_;
    std::string_view indent_;
};

class ChipWriter {
public:
    ChipWriter(const FittedChip& chip, const ImportOptions& options, bool isShort)
        : chip_(chip), word_(options.word), name_(options.name), isShort_(isShort) {}

    std::string head(const std::string& source) {
        constexpr std::size_t longest = 200;
        std::string text =
            fmt::format("# Imported from {}.\n\n[chip]\n",
                        printable(std::filesystem::path(source).filename().native(), longest));
        Lines lines(text, "");
        lines.addText("title", chip_.title);
        lines.addText("name", name_);
        lines.addText("description", chip_.description);
        return text + word();
    }

    [[nodiscard]] std::string registerText(const FittedRegister& any) const {
        std::string text = "\n[[register]]\n";
        Lines lines(text, "");
        lines.addText("title", any.title);
        lines.add("address", hexNumber(any.address));
        addBits(any, lines);
        if (any.reset != 0)
            lines.add("reset", hexNumber(any.reset));
        if (any.access != chips::Access::ReadWrite)
            lines.addText("access", accessName(any.access));
        if (any.isVolatile)
            lines.add("volatile", "true");
        lines.addText("page", any.page);
        if (!isShort_)
            lines.addText("note", any.note);
        for (const FittedField& field : any.fields)
            if (!isShort_ || field.width > 1 || !field.choices.empty() || field.shares)
                addField(field, text);
        if (any.readClears)
            text += "\n  [[register.view]]\n  clears = true\n";
        return text;
    }

private:
    std::string word() {
        std::string text = "\n[word]\n";
        Lines lines(text, "");
        const auto addOr = [&](const char* key, const std::string& value,
                               const std::string& wanted) {
            if (value.empty())
                text += fmt::format("# {} = ... # {}\n", key, wanted);
            else
                lines.add(key, value);
        };
        const bool hasBoth = word_.write || word_.read;
        if (!word_.bits || word_.address.empty() || word_.data.empty() || !hasBoth)
            text += "# A register map does not know the words that carry it: fill in these keys.\n";
        addOr("bits", word_.bits ? fmt::format("{}", *word_.bits) : "", "bits of a word, 1 to 64");
        addOr("type", word_.type ? fmt::format("{}", *word_.type) : "",
              "SPI type, 1 to 8; without it 1");
        if (word_.packed)
            lines.add("packed", "true");
        addOr("address", word_.address.empty() ? "" : tomlString(word_.address.text()),
              fmt::format("bits that carry the address, as \"15:8\"; at least {}", addressBits()));
        addOr("data", word_.data.empty() ? "" : tomlString(word_.data.text()),
              fmt::format("bits that carry the data, as \"7:0\"; at least {}", dataBits()));
        const auto constant = [&](const char* key, const std::optional<std::uint64_t>& value) {
            if (value || !hasBoth)
                addOr(key, value ? hexNumber(*value) : "",
                      fmt::format("bits that are set in each {}, as 0x8000", key));
        };
        constant("write", word_.write);
        constant("read", word_.read);
        if (word_.answersNext)
            lines.addText("answer", "next word");
        if (word_.fetch)
            lines.add("fetch", hexNumber(*word_.fetch));
        return text;
    }

    [[nodiscard]] int addressBits() const {
        std::uint64_t largest = 0;
        for (const FittedRegister& any : chip_.registers)
            largest = std::max(largest, any.address);
        return std::max(1, static_cast<int>(std::bit_width(largest)));
    }

    [[nodiscard]] int dataBits() const {
        int widest = 1;
        for (const FittedRegister& any : chip_.registers)
            widest = std::max(widest, any.width);
        return widest;
    }

    /// The captions of the bits where fields give them names, else their number.
    static void addBits(const FittedRegister& any, Lines& lines) {
        if (any.fields.empty())
            return lines.add("width", fmt::format("{}", any.width));
        std::vector<const FittedField*> at(static_cast<std::size_t>(any.width) + 1);
        for (const FittedField& field : any.fields)
            for (int bit = field.first; bit < field.first + field.width; ++bit)
                if (const FittedField*& place = at.at(static_cast<std::size_t>(bit)); !place)
                    place = &field;
        std::vector<std::string> captions;
        for (int bit = 0, first = 0; bit < any.width; first = ++bit) {
            const FittedField* field = at.at(static_cast<std::size_t>(bit));
            while (field != nullptr && at.at(static_cast<std::size_t>(bit) + 1) == field)
                ++bit;
            captions.push_back(tomlString(captionOf(field, first, bit)));
        }
        lines.add("bits", fmt::format("[{}]", fmt::join(captions, ", ")));
    }

    /// Of the bits `first` to `last` of a register, which are those of a field or one without.
    static std::string captionOf(const FittedField* field, int first, int last) {
        if (field == nullptr)
            return "-";
        return field->width == 1 ? field->title
                                 : fmt::format("{} {{{}..{}}}", field->title, first - field->first,
                                               last - field->first);
    }

    void addField(const FittedField& field, std::string& text) const {
        text += "\n  [[register.field]]\n";
        Lines lines(text, "  ");
        lines.addText("title", field.title);
        lines.add("bits", bitsText(field.first, field.width));
        if (!field.choices.empty())
            addChoices(field, lines);
        if (field.shares)
            lines.add("shares", "true");
        if (!isShort_)
            lines.addText("note", field.note);
    }

    static void addChoices(const FittedField& field, Lines& lines) {
        std::vector<std::string> texts;
        std::vector<std::string> codes;
        bool isCounted = true; // the codes are 0, 1, 2, ...
        for (const chips::Choice& choice : field.choices) {
            isCounted = isCounted && choice.code == texts.size();
            texts.push_back(tomlString(choice.text));
            codes.push_back(hexNumber(choice.code));
        }
        lines.add("texts", fmt::format("[{}]", fmt::join(texts, ", ")));
        if (!isCounted)
            lines.add("codes", fmt::format("[{}]", fmt::join(codes, ", ")));
    }

    const FittedChip& chip_;
    const WordKeys& word_;
    const std::string& name_;
    bool isShort_; ///< without notes, and without fields that captions can express
};

} // namespace

ChipText chipText(const FittedChip& chip, const ImportOptions& options, const std::string& source,
                  chips::Problems& notes) {
    ChipText made;
    for (const bool isShort : {false, true}) {
        ChipWriter writer(chip, options, isShort);
        made = {.text = writer.head(source), .registers = 0};
        for (const FittedRegister& any : chip.registers) {
            const std::string more = writer.registerText(any);
            if (made.text.size() + more.size() > chips::longestFile)
                break;
            made.text += more;
            ++made.registers;
        }
        if (made.registers == chip.registers.size() && !isShort)
            return made;
    }
    constexpr const char* advice = "A chip's file has up to 1 MiB: choose peripherals with --only.";
    notes.push_back({{}, "descriptions are left out, and single bits are captions alone", advice});
    if (made.registers < chip.registers.size())
        notes.push_back({{},
                         fmt::format("the last {} registers are left out",
                                     chip.registers.size() - made.registers),
                         advice});
    return made;
}

} // namespace bitlux::mapimport
