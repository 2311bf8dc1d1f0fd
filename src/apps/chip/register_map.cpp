#include "apps/chip/register_map.h"

#include "platform/printable.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

using chips::Access;
using chips::Field;
using chips::Register;
using chips::View;
using chips::WordFormat;

constexpr std::size_t columns = 80;
constexpr std::size_t longestMapText = 1000;
constexpr int digitBits = 4;

std::string shown(const std::string& text) {
    return printable(text, longestMapText);
}

/// The number of characters of a text, each one column wide.
std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; // not a continuation byte
    }));
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - std::min(width, widthOf(text)), ' ');
}

int digitsFor(int bits) {
    return std::max(1, (bits + digitBits - 1) / digitBits);
}

const char* accessText(Access access) {
    switch (access) {
    case Access::ReadWrite:
        return "rw";
    case Access::ReadOnly:
        return "r";
    case Access::WriteOnly:
        return "w";
    case Access::ReadClears:
        return "r, clears";
    case Access::WriteOneClears:
        return "rw, 1 clears";
    }
    return "";
}

/// Wraps words into lines, indented to `column` from the second on.
class Lines {
public:
    Lines(std::ostream& output, std::string start, std::size_t column)
        : output_(output), line_(std::move(start)), column_(column) {
        if (widthOf(line_) < column_)
            line_ = padded(line_, column_);
    }
    ~Lines() { put(); }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;

    /// `item` stays on one line.
    void add(const std::string& item) {
        const std::size_t needed = widthOf(item) + (isNew_ ? 0 : 1);
        if (!isNew_ && widthOf(line_) + needed > columns) {
            put();
            line_.assign(column_, ' ');
            isNew_ = true;
        }
        line_ += (isNew_ ? "" : " ") + item;
        isNew_ = false;
    }
    void addWords(const std::string& text) {
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = std::min(text.find(' ', at), text.size());
            if (end > at)
                add(text.substr(at, end - at));
            at = end + 1;
        }
    }

private:
    void put() {
        line_.erase(line_.find_last_not_of(' ') + 1);
        fmt::print(output_, "{}\n", line_);
    }

    std::ostream& output_;
    std::string line_;
    std::size_t column_;
    bool isNew_ = true;
};

class Map {
public:
    Map(const chips::Chip& chip, std::ostream& output)
        : chip_(chip), output_(output), digits_(digitsFor(chip.word.address.size())) {
        std::size_t others =
            sizeof("        reset ") + accessWidth + static_cast<std::size_t>(digits_);
        int widest = 0;
        for (const Register& any : chip.registers) {
            title_ = std::max(title_, widthOf(shown(any.title)));
            widest = std::max(widest, any.width());
        }
        others += static_cast<std::size_t>(digitsFor(widest));
        title_ = std::min(title_, columns - std::min(columns, others));
    }

    void print() const {
        printHead();
        for (const std::string& page : chip_.registerPages())
            printAll(page, [&page](const std::string& where, const std::string& form) {
                return form.empty() && where == page;
            });
        for (const chips::Companion& any : chip_.panel.described)
            printAll(any.caption, [&any](const std::string&, const std::string& form) {
                return form == any.form;
            });
    }

private:
    /// Registers and commands that `isHere` selects by their pages and forms.
    template <typename IsHere>
    void printAll(const std::string& heading, IsHere isHere) const {
        bool isEmpty = true;
        const auto head = [&] {
            if (std::exchange(isEmpty, false))
                fmt::print(output_, "\n{}\n", shown(heading));
        };
        for (const Register& any : chip_.registers)
            if (isHere(any.page, any.row.form)) {
                head();
                printRegister(any);
            }
        for (const chips::Command& any : chip_.commands)
            if (isHere(any.page, any.form)) {
                head();
                printCommand(any);
            }
    }

    static constexpr std::size_t accessWidth = 12;
    static constexpr std::size_t bitsColumn = 8;
    static constexpr std::size_t fieldColumn = 16;
    static constexpr std::size_t textsColumn = 18;

    void printHead() const {
        addLine(chip_.name + ": " + shown(chip_.title), 0);
        if (!chip_.description.empty())
            addLine(shown(chip_.description), 0);
        const WordFormat& word = chip_.word;
        std::string format = fmt::format("Words of {} bits, SPI type {}", word.bits, word.type);
        const auto addConstant = [&](const char* name, std::uint64_t value) {
            format += fmt::format(", {} {}", name, wordText(value));
        };
        addConstant("write", word.write);
        addConstant("read", word.read);
        if (word.flags)
            addConstant("flags", *word.flags);
        if (!word.address.empty())
            format += fmt::format(", address [{}]", word.address.text());
        if (!word.data.empty())
            format += fmt::format(", data [{}]", word.data.text());
        if (word.check.exists())
            format += fmt::format(", {} [{}]",
                                  word.check.kind == chips::WordCheck::Kind::Crc ? "CRC" : "parity",
                                  word.check.place.text());
        if (word.answersNext)
            format += ", answered with the next word";
        addLine(format, 0);
        printDevices();
    }

    /// The names of the variants on the virtual bench.
    void printDevices() const {
        if (chip_.devices.size() < 2)
            return;
        fmt::print(output_, "On the virtual bench:\n");
        std::size_t width = 0;
        for (const chips::Device& any : chip_.devices)
            width = std::max(width, any.name.size());
        for (const chips::Device& any : chip_.devices)
            Lines(output_, "  " + padded(any.name, width), width + 4)
                .addWords(shown(any.description));
    }

    /// Prints a text from a column on, in several lines if necessary.
    void addLine(const std::string& text, std::size_t column) const {
        Lines(output_, "", column).addWords(text);
    }

    [[nodiscard]] std::string wordText(std::uint64_t word) const {
        return fmt::format("{:0{}X}", word, digitsFor(chip_.word.bits));
    }

    void printRegister(const Register& any) const {
        fmt::print(output_, "  {:0{}X}  {}  {:<{}}  reset {:0{}X}\n", any.address, digits_,
                   padded(shown(any.title), title_), accessText(any.access), accessWidth, any.reset,
                   digitsFor(any.width()));
        if (!any.note.empty())
            addLine(shown(any.note), bitsColumn);
        std::uint64_t covered = 0;
        for (const Field& field : any.fields) {
            printField(field);
            covered |= field.bits.mask();
        }
        printBits(any.row, covered);
        for (const View& view : any.views)
            if (view.row.form == any.row.form) // else it is listed again
                printView(view, any);
    }

    void printField(const Field& field) const {
        Lines(output_, fmt::format("{:{}}[{}]", "", bitsColumn, field.bits.text()), fieldColumn)
            .addWords(shown(field.title));
        if (!field.note.empty())
            addLine(shown(field.note), textsColumn);
        if (field.kind == Field::Kind::Box && field.choices.size() == 1 &&
            field.choices.front().text == field.title)
            return;
        const int digits = digitsFor(field.bits.size());
        for (const chips::Choice& choice : field.choices)
            Lines(output_, fmt::format("{:{}}{:{}X}", "", textsColumn, choice.code, digits),
                  textsColumn + static_cast<std::size_t>(digits) + 2)
                .addWords(shown(choice.text));
    }

    /// The captions of bits without a field, the highest first.
    void printBits(const chips::Row& row, std::uint64_t covered) const {
        std::vector<std::string> items;
        for (int bit = row.width() - 1; bit >= 0; --bit) {
            const std::string& caption = row.captions[static_cast<std::size_t>(bit)];
            if ((covered >> bit & 1) == 0 && caption != "-" && caption != std::to_string(bit))
                items.push_back(fmt::format("[{}] {}", bit, shown(caption)));
        }
        if (items.empty())
            return;
        Lines lines(output_, "", bitsColumn);
        for (std::size_t i = 0; i < items.size(); ++i)
            lines.add(items[i] + (i + 1 < items.size() ? "," : ""));
    }

    /// A title after its heading.
    static std::string titleOf(const std::string& group, const std::string& title) {
        return shown(group.empty() ? title : group + ": " + title);
    }

    /// A view that shows the register like its write row is not described.
    void printView(const View& view, const Register& owner) const {
        if (view.operation == chips::Operation::Read && view.address == owner.address &&
            view.row.captions == owner.row.captions)
            return;
        addLine(fmt::format("{}, word {}", titleOf(view.group, view.title),
                            wordText(chip_.word.word(view.operation, view.address, view.extra))),
                bitsColumn);
        printBits(view.row, 0);
    }

    void printCommand(const chips::Command& any) const {
        const auto digits = static_cast<std::size_t>(digitsFor(chip_.word.bits));
        const chips::GivenBack& code = any.givenBack;
        Lines(output_,
              fmt::format("  {}", any.word ? wordText(*any.word) : std::string(digits, '-')),
              4 + digits)
            .addWords(titleOf(any.group, any.title) +
                      (code.exists()
                           ? fmt::format(": gives {} back, [{}] inverted, with {:X}",
                                         shown(code.owner), code.inverted.text(), code.value)
                           : ""));
        if (!any.note.empty())
            addLine(shown(any.note), bitsColumn);
    }

    const chips::Chip& chip_;
    std::ostream& output_;
    int digits_;
    std::size_t title_ = 0;
};

} // namespace

void printRegisterMap(const chips::Chip& chip, std::ostream& output) {
    Map(chip, output).print();
}

} // namespace bitlux
