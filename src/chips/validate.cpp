#include "chips/validate.h"

#include "chips/control_census.h"

#include <algorithm>
#include <map>
#include <set>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr int frameBits = 40; ///< data that a frame of the dongle takes
constexpr int byteBits = 8;

class Validator {
public:
    explicit Validator(const Chip& chip) : chip_(chip), census_(chip, problems_) {}

    Problems run() {
        if (chip_.registers.empty() && chip_.commands.empty())
            add({.line = 1, .column = 1}, "the chip has neither registers nor commands",
                "Describe at least one with `[[register]]` or `[[command]]`.");
        checkWord();
        checkCheck();
        for (const Register& any : chip_.registers)
            checkRegister(any);
        checkAddresses();
        checkRequests();
        checkLines();
        for (const Command& any : chip_.commands)
            checkWordFits(any.at, any.word, "the word of the command");
        checkReadAlls();
        checkVariants();
        checkDevices();
        checkPages();
        checkForms();
        return std::move(problems_);
    }

private:
    void add(const Place& at, std::string text, std::string advice) {
        problems_.push_back({at, std::move(text), std::move(advice)});
    }

    // The word

    void checkWord() {
        const WordFormat& word = chip_.word;
        for (const auto& [bits, name] :
             {std::pair(&word.address, "address"), std::pair(&word.data, "data"),
              std::pair(&word.statusOfRead, "of_read")})
            if (bits->highest() >= word.bits)
                add(word.at,
                    fmt::format("`{}` has bit {}, but a word ends with bit {}", name,
                                bits->highest(), word.bits - 1),
                    "Name bits of the word.");
        if ((word.address.mask() & word.data.mask()) != 0)
            add(word.at, "address and data lie on the same bits", "Part them.");
        if (word.packed && (word.bits % byteBits != 0 || word.bits > frameBits))
            add(word.at, fmt::format("words of {} bits cannot be packed", word.bits),
                "Packed words have 8, 16, 24, 32 or 40 bits.");
        checkConstants();
        if (!word.status.captions.empty() && word.status.width() != word.bits)
            add(word.at,
                fmt::format("the status row has {} captions for {} bits", word.status.width(),
                            word.bits),
                "Give one for each bit of an answer, bit 0 first.");
    }

    void checkConstants() {
        const WordFormat& word = chip_.word;
        std::vector<std::pair<const char*, std::uint64_t>> constants{{"write", word.write},
                                                                     {"read", word.read}};
        if (word.flags)
            constants.emplace_back("flags", *word.flags);
        for (const auto& [name, constant] : constants) {
            checkWordFits(word.at, constant, fmt::format("`{}`", name).c_str());
            if ((constant & (word.address.mask() | word.data.mask())) != 0)
                add(word.at, fmt::format("`{}` has bits of the address or the data", name),
                    "Leave to it the bits that tell the operation.");
        }
        if (chip_.registers.empty())
            return;
        for (std::size_t i = 0; i < constants.size(); ++i)
            for (std::size_t k = i + 1; k < constants.size(); ++k)
                if (constants[i].second == constants[k].second && clashes(constants[k].first))
                    add(word.at,
                        fmt::format("`{}` and `{}` are the same word", constants[i].first,
                                    constants[k].first),
                        "Give each operation bits of its own.");
    }

    /// A chip that is only written needs no word to read.
    [[nodiscard]] bool clashes(std::string_view name) const {
        const Operation operation = name == "flags" ? Operation::Flags : Operation::Read;
        return std::any_of(chip_.registers.begin(), chip_.registers.end(), [&](const auto& any) {
            return any.writable() &&
                   std::any_of(any.views.begin(), any.views.end(), [&](const View& view) {
                       return view.operation == operation && view.address == any.address;
                   });
        });
    }

    void checkCheck() {
        const WordCheck& check = chip_.word.check;
        if (!check.exists())
            return;
        const bool isCrc = check.kind == WordCheck::Kind::Crc;
        if (check.over.empty() || check.place.empty())
            add(check.at, "a check wants `over` and `place`",
                "Say which bits it covers and where it stands.");
        else if (!isCrc && check.place.size() != 1)
            add(check.at, "parity takes one bit", "Name one bit as its `place`.");
        if ((check.over.mask() & check.place.mask()) != 0)
            add(check.at, "the check covers itself", "Leave its `place` out of `over`.");
        if (((check.over.mask() | check.place.mask()) & ~chip_.word.mask()) != 0)
            add(check.at, "the check has bits beyond the word", "Name bits of the word.");
        if ((check.place.mask() & (chip_.word.address.mask() | chip_.word.data.mask())) != 0)
            add(check.at, "the check lies on bits of the address or the data",
                "Give it bits of its own.");
        if (isCrc && (check.polynomial == 0 || check.polynomial > check.place.largest() ||
                      check.start > check.place.largest() || check.invert > check.place.largest()))
            add(check.at, "the CRC's numbers do not fit its place",
                "Give the polynomial without its highest term, in as many bits as the place has.");
    }

    void checkWordFits(const Place& at, std::uint64_t word, const char* what) {
        if ((word & ~chip_.word.mask()) != 0)
            add(at, fmt::format("{} has more than {} bits", what, chip_.word.bits),
                "Leave out what no word carries.");
    }

    // Registers

    void checkRegister(const Register& any) {
        const WordFormat& word = chip_.word;
        if (any.address > word.address.largest())
            add(any.at,
                fmt::format("address {} finds no room in {} bits", any.address,
                            word.address.size()),
                "Give a smaller one, or more bits to `address` of `[word]`.");
        if (any.width() > word.data.size())
            add(any.at,
                fmt::format("the register has {} bits, but a word carries {} bits of data",
                            any.width(), word.data.size()),
                "Shorten it, or give more bits to `data` of `[word]`.");
        if ((any.reset & ~any.mask()) != 0)
            add(any.at, fmt::format("the reset value has more than {} bits", any.width()),
                "Give one that finds room.");
        if (((any.neverWritten | any.alwaysWritten) & ~word.data.largest()) != 0 ||
            (any.neverWritten & any.alwaysWritten) != 0)
            add(any.at, "`never_written` and `always_written` do not fit the data of a word",
                "Name bits of the data, each in one of them.");
        checkBitsOfFields(any);
        for (const Field& field : any.fields)
            checkField(field);
        for (const View& view : any.views)
            checkView(view);
        if (!any.reply.empty())
            checkReply(any);
    }

    void checkReply(const Register& any) {
        for (const Register& other : chip_.registers)
            for (const View& view : other.views)
                if (view.title == any.reply || (other.title == any.reply && view.row.exists()))
                    return;
        add(any.at, fmt::format("no view shows \"{}\"", any.reply),
            "Name the register, or the view, whose row shows the answer to a write.");
    }

    void checkBitsOfFields(const Register& any) {
        std::uint64_t told = 0;
        for (const Field& field : any.fields) {
            if (field.bits.highest() >= any.width())
                add(field.at,
                    fmt::format("bit {} lies outside the register, which has {}",
                                field.bits.highest(), any.width()),
                    "Name bits of the register.");
            if ((told & field.bits.mask()) != 0 && !field.shares && !field.when.exists())
                add(field.at, fmt::format("the bits {} are described before", field.bits.text()),
                    "Name other bits, or say `shares = true` when both are meant.");
            told |= field.bits.mask();
        }
    }

    void checkField(const Field& field) {
        if (field.kind == Field::Kind::Box && field.choices.size() > 1)
            add(field.at, "a box has one text", "Make it options or a list.");
        if (field.choices.empty())
            add(field.at, "the field has no texts", "Give one for each value.");
        for (const Choice& choice : field.choices)
            if (choice.code > field.bits.largest()) {
                add(field.at,
                    fmt::format("the value {} of \"{}\" finds no room in {} bits", choice.code,
                                choice.text, field.bits.size()),
                    "Give fewer texts or smaller codes, or more bits to the field.");
                break;
            }
        if (field.selected >= static_cast<int>(field.choices.size()))
            add(field.at, fmt::format("there is no choice {} to start with", field.selected),
                "Choices count from 0.");
        for (const ControlName* name : {&field.gate, &field.when.control})
            if (name->exists() && !census_.has(*name))
                add(field.at, fmt::format("there is no control {}", text(*name)),
                    census_.nearText(*name));
    }

    void checkView(const View& view) {
        if (view.operation == Operation::Flags && !chip_.word.flags)
            add(view.at, "no word reads flags", "Give `flags` in `[word]`.");
        if (view.address > chip_.word.address.largest())
            add(view.at, fmt::format("address {} finds no room in a word", view.address),
                "Give a smaller one.");
        if (view.extra > chip_.word.data.largest())
            add(view.at, "`extra` has bits beyond the data of a word", "Give a smaller one.");
        if (view.row.width() > chip_.word.data.size())
            add(view.at, "the view has more bits than a word carries data", "Shorten it.");
        if ((view.reset.value_or(0) & ~largest(view.row)) != 0)
            add(view.at, fmt::format("the reset value has more than {} bits", view.row.width()),
                "Give one that finds room.");
        if (!view.row.exists())
            add(view.at, "the view has no row", "Name its labels with `row`.");
    }

    /// Writes that a chip could not tell from each other, but for bits that are always written.
    void checkAddresses() {
        std::map<std::pair<std::uint64_t, std::uint64_t>, const Register*> taken;
        for (const Register& any : chip_.registers) {
            if (!any.writable() || !any.writeButton.exists())
                continue;
            const auto [found, isNew] =
                taken.emplace(std::pair(any.address, any.alwaysWritten), &any);
            if (!isNew)
                add(any.at,
                    fmt::format("\"{}\" and \"{}\" are written by the same word", any.title,
                                found->second->title),
                    "Give them different addresses.");
        }
    }

    void checkRequests() {
        std::map<std::uint64_t, const View*> taken;
        for (const Register& any : chip_.registers)
            for (const View& view : any.views) {
                if (view.row.form != any.row.form) // the same view, shown once more
                    continue;
                const auto [found, isNew] =
                    taken.emplace(chip_.word.word(view.operation, view.address, view.extra), &view);
                if (!isNew)
                    add(view.at,
                        fmt::format("the view is read by the word of the one in line {}",
                                    found->second->at.line),
                        "Give it another `address` or `extra`.");
            }
    }

    // Names

    void takeLine(const Line& line, const Place& at, std::set<std::string>& names) {
        std::vector<std::string> all = line.aliases;
        if (line.exists())
            all.push_back(line.name);
        for (const std::string& name : all)
            if (!names.insert(name).second)
                add(at, fmt::format("the line \"{}\" of a sequence is there twice", name),
                    "Give it another name with `line`.");
    }

    void checkLines() {
        std::set<std::string> names{"Wait"};
        std::set<std::string> titles;
        for (const Register& any : chip_.registers) {
            if (!titles.insert(any.title).second)
                add(any.at, fmt::format("there are two registers \"{}\"", any.title),
                    "Give each a title of its own.");
            if (!sharesLine(any))
                takeLine(any.writeLine, any.at, names);
            for (const View& view : any.views)
                takeLine(view.line, view.at, names);
        }
        for (const Command& any : chip_.commands)
            takeLine(any.line, any.at, names);
    }

    /// Registers with one write row have one line.
    [[nodiscard]] bool sharesLine(const Register& any) const {
        for (const Register& other : chip_.registers) {
            if (&other == &any)
                return false;
            if (any.row.exists() && other.row.first == any.row.first &&
                other.writeLine.name == any.writeLine.name)
                return true;
        }
        return false;
    }

    void checkReadAlls() {
        for (const ReadAll& any : chip_.readAlls)
            for (const ReadAll::Step& step : any.steps) {
                const bool isView = step.row.exists();
                if (isView ? !hasView(any.form, step.row) : !census_.has(step.button, any.form))
                    add(any.at,
                        fmt::format("there is no {} {}", isView ? "view with the row" : "button",
                                    text(isView ? step.row : step.button)),
                        census_.nearText(isView ? step.row : step.button));
                checkVariantNames(any.at, step.variants);
            }
    }

    [[nodiscard]] bool hasView(const std::string& form, const ControlName& row) const {
        return std::any_of(
            chip_.registers.begin(), chip_.registers.end(), [&](const Register& any) {
                return std::any_of(any.views.begin(), any.views.end(), [&](const View& view) {
                    return view.row.form == form && view.row.first.name == row.name &&
                           view.row.first.index == std::max(row.index, 0);
                });
            });
    }

    void checkForms() {
        for (const Register& any : chip_.registers) {
            checkForm(any.row.form, any.at);
            for (const View& view : any.views)
                checkForm(view.row.form, view.at);
        }
        for (const Command& any : chip_.commands)
            checkForm(any.form, any.at);
        for (const ReadAll& any : chip_.readAlls)
            checkForm(any.form, any.at);
    }

    void checkForm(const std::string& form, const Place& at) {
        if (!form.empty() && chip_.panel.findDescribed(form) == nullptr)
            add(at, fmt::format("there is no companion form \"{}\"", form),
                "Describe it in `companions` of `[panel]`.");
    }

    void checkVariantNames(const Place& at, const std::vector<std::string>& names) {
        for (const std::string& name : names)
            if (std::find(chip_.variants.titles.begin(), chip_.variants.titles.end(), name) ==
                chip_.variants.titles.end())
                add(at, fmt::format("there is no variant \"{}\"", name),
                    "Name one of the `titles` in `[variants]`.");
    }

    void checkVariants() {
        for (const Variants::Rule& rule : chip_.variants.rules)
            checkVariantNames(rule.at, rule.on);
        for (const Variants::Caption& caption : chip_.variants.captions)
            checkVariantNames(caption.at, caption.on);
    }

    void checkDevices() {
        std::set<std::string> names;
        for (const Device& any : chip_.devices) {
            const bool plain =
                !any.name.empty() && std::all_of(any.name.begin(), any.name.end(), [](char c) {
                    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                           (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.';
                });
            if (!plain)
                add(any.at, fmt::format("\"{}\" is no name of a device", any.name),
                    "Make it of letters, digits, dots, dashes and underscores.");
            if (!names.insert(any.name).second)
                add(any.at, fmt::format("there are two devices \"{}\"", any.name),
                    "Give each a name of its own.");
            for (const Device::Reset& reset : any.resets)
                checkReset(reset);
        }
    }

    void checkReset(const Device::Reset& reset) {
        const Register* owner = chip_.find(reset.owner);
        if (owner == nullptr) {
            add(reset.at, fmt::format("there is no register \"{}\"", reset.owner),
                "Name one by its title.");
            return;
        }
        const View* view = owner->find(reset.view);
        if (!reset.view.empty() && (view == nullptr || !view->ownValue()))
            add(reset.at,
                fmt::format("\"{}\" has no view \"{}\" with a value of its own", reset.owner,
                            reset.view),
                "Name one that reads flags or has a `reset`, or leave `view` out.");
        else if ((reset.value & ~largest(view != nullptr ? view->row : owner->row)) != 0)
            add(reset.at, "the reset value has too many bits", "Give one that finds room.");
    }

    static std::uint64_t largest(const Row& row) { return BitList::range(0, row.width()).mask(); }

    void checkPages() {
        for (const OuterPage& page : chip_.panel.pages)
            if (page.title.empty())
                add(chip_.panel.at, "a page of the panel has no title", "Give it one.");
        if (chip_.title.empty())
            add({.line = 1, .column = 1}, "the chip has no title", "Give `title` in `[chip]`.");
    }

    const Chip& chip_;
    Problems problems_;
    ControlCensus census_;
};

} // namespace

Problems validate(const Chip& chip) {
    return Validator(chip).run();
}

} // namespace bitlux::chips
