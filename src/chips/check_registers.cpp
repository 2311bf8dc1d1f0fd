#include "chips/findings.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

class RegistersCheck {
public:
    explicit RegistersCheck(const Findings& found) : found_(found), word_(found.chip.word) {}

    void run() const {
        for (const Register& any : found_.chip.registers)
            checkRegister(any);
    }

private:
    void checkRegister(const Register& any) const {
        if (any.address > word_.address.largest())
            add(any.at,
                fmt::format("address {} does not fit into {} bits", any.address,
                            word_.address.size()),
                "Give a smaller one, or more bits to `address` of `[word]`.");
        if (any.width() > word_.data.size())
            add(any.at,
                fmt::format("the register has {} bits, but a word carries {} bits of data",
                            any.width(), word_.data.size()),
                "Shorten it, or give more bits to `data` of `[word]`.");
        if ((any.reset & ~any.mask()) != 0)
            add(any.at, fmt::format("the reset value has more than {} bits", any.width()),
                "Give one that fits.");
        if (((any.neverWritten | any.alwaysWritten) & ~word_.data.largest()) != 0 ||
            (any.neverWritten & any.alwaysWritten) != 0)
            add(any.at, "`never_written` and `always_written` do not fit the data of a word",
                "Name bits of the data, each in one of them.");
        checkBitsOfFields(any);
        for (const Field& field : any.fields)
            checkField(field);
        for (const View& view : any.views)
            checkView(view, any);
    }

    void checkBitsOfFields(const Register& any) const {
        for (auto field = any.fields.begin(); field != any.fields.end(); ++field) {
            if (field->bits.highest() >= any.width())
                add(field->at,
                    fmt::format("bit {} is outside the register, which has {}",
                                field->bits.highest(), any.width()),
                    "Name bits of the register.");
            if (field->shares || field->when.exists())
                continue;
            const auto before = std::find_if(any.fields.begin(), field, [&](const Field& other) {
                return (other.bits.mask() & field->bits.mask()) != 0;
            });
            if (before != field)
                add(field->at,
                    fmt::format("\"{}\" in line {} has the bits {} as well", before->title,
                                before->at.line, field->bits.text()),
                    "Name other bits, or say `shares = true` when both are meant.");
        }
    }

    void checkField(const Field& field) const {
        const std::size_t texts = field.choices.size();
        if (field.kind == Field::Kind::Box && texts > 1)
            add(field.at, "a box has one text", "Make it options or a list.");
        if (field.kind != Field::Kind::Box && texts < 2 && (texts == 1 || field.control.exists()))
            add(field.at, fmt::format("the field has {}", texts == 0 ? "no texts" : "one text"),
                "Give one for each value.");
        for (const Choice& choice : field.choices)
            if (choice.code > field.bits.largest()) {
                add(field.at,
                    fmt::format("the value {} of \"{}\" does not fit into {} bits", choice.code,
                                choice.text, field.bits.size()),
                    "Give fewer texts or smaller codes, or more bits to the field.");
                break;
            }
        if (field.selected >= static_cast<int>(texts))
            add(field.at, fmt::format("there is no choice {} to start with", field.selected),
                "Choices count from 0.");
        if (field.typed && field.kind != Field::Kind::List)
            add(field.at, "only a list can be typed into", "Remove `typed`, or name a `list`.");
    }

    void checkView(const View& view, const Register& owner) const {
        if (view.operation == Operation::Flags && !word_.flags)
            add(view.at, "no word reads flags", "Give `flags` in `[word]`.");
        if (view.address > word_.address.largest() && view.address != owner.address)
            add(view.at, fmt::format("address {} does not fit into a word", view.address),
                "Give a smaller one.");
        if (view.extra > word_.data.largest())
            add(view.at, "`extra` has bits beyond the data of a word", "Give a smaller one.");
        if (view.row.width() > word_.data.size() && view.row.width() != owner.width())
            add(view.at, "the view has more bits than a word carries data", "Shorten it.");
        if (!view.row.exists() || view.row.width() == 0)
            add(view.at, "the view has no row", "Name its labels with `row`, and list its `bits`.");
    }

    void add(const Place& at, std::string text, std::string advice) const {
        found_.add(at, std::move(text), std::move(advice));
    }

    const Findings& found_;
    const WordFormat& word_;
};

} // namespace

void checkRegisters(const Findings& found) {
    RegistersCheck(found).run();
}

} // namespace bitlux::chips
