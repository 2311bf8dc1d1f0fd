#include "chips/findings.h"

#include "platform/code_page.h"
#include "platform/failure.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

using Names = std::set<std::string, std::less<>>;

bool isIdentifier(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
               c == '_';
    });
}

class NamesCheck {
public:
    explicit NamesCheck(const Findings& found)
        : found_(found),
          chip_(found.chip),
          hasParts_(!found.chip.panel.parts.empty()),
          variants_(chip_.variants.titles.begin(), chip_.variants.titles.end()) {}

    void run() {
        checkLines();
        checkReplies();
        for (const Register& any : chip_.registers)
            for (const Field& field : any.fields)
                checkField(field);
        for (const Register& any : chip_.registers)
            for (const View& view : any.views)
                checkVariantNames(view.at, view.on);
        checkReadAlls();
        for (const Command& any : chip_.commands)
            if (any.givenBack.exists())
                checkGivenBack(any);
        checkSums();
        checkVariants();
        checkPages();
        checkForms();
    }

private:
    void takeLine(const Line& line, const Place& at) {
        std::vector<std::string> all = line.aliases;
        if (line.exists())
            all.push_back(line.name);
        for (const std::string& name : all) {
            if (!lines_.insert(name).second)
                add(at, fmt::format("the line \"{}\" of a sequence is there twice", name),
                    "Give it another name with `line`.");
            checkCharacters(name, at);
        }
        checkCharacters(line.value, at);
    }

    /// Files of sequences use a code page.
    void checkCharacters(const std::string& text, const Place& at) {
        try {
            toCodePage(text);
        } catch (const Failure&) {
            add(at, fmt::format("no file of a sequence can hold \"{}\"", text),
                "Name the line with `line`, in characters of Windows-1252.");
        }
    }

    void checkLines() {
        Names titles;
        for (const Register& any : chip_.registers) {
            if (!titles.insert(any.title).second)
                add(any.at, fmt::format("there are two registers \"{}\"", any.title),
                    "Give each a title of its own.");
            if (!sharesLine(any))
                takeLine(any.writeLine, any.at);
            for (const View& view : any.views)
                takeLine(view.line, view.at);
        }
        for (const Command& any : chip_.commands)
            takeLine(any.line, any.at);
    }

    /// Registers with one write row have one line.
    bool sharesLine(const Register& any) {
        return any.row.exists() && !shared_.emplace(text(any.row.first), any.writeLine.name).second;
    }

    void checkReplies() {
        Names shown;
        for (const Register& any : chip_.registers)
            for (const View& view : any.views) {
                shown.insert(view.title);
                shown.insert(any.title);
            }
        for (const Register& any : chip_.registers)
            if (!any.reply.empty() && shown.find(any.reply) == shown.end())
                add(any.at, fmt::format("no view shows \"{}\"", any.reply),
                    "Name the register, or the view, whose row shows the answer to a write.");
    }

    void checkField(const Field& field) {
        using Kind = ControlCensus::Kind;
        checkControl(field.gate, Kind::Box, field.at);
        if (field.when.exists() && found_.census.kindOf(field.when.control) != Kind::Option)
            checkControl(field.when.control, Kind::Box, field.at);
        if (!field.mirror.exists() || hasParts_)
            return;
        for (std::size_t i = 0; i < field.choices.size(); ++i)
            checkControl({field.mirror.name, field.mirror.index + static_cast<int>(i)},
                         Kind::Option, field.at);
    }

    void checkControl(const ControlName& name, ControlCensus::Kind kind, const Place& at,
                      const std::string& form = {}) {
        if (!name.exists() || found_.census.kindOf(name, form) == kind)
            return;
        const char* what = kind == ControlCensus::Kind::Box      ? "box"
                           : kind == ControlCensus::Kind::Option ? "option"
                                                                 : "button";
        if (found_.census.kindOf(name, form))
            add(at, fmt::format("{} is no {}", text(name), what), "Name one.");
        else
            add(at, fmt::format("there is no {} {}", what, text(name)),
                found_.census.nearText(name));
    }

    void checkReadAlls() {
        for (const ReadAll& any : chip_.readAlls)
            for (const ReadAll::Step& step : any.steps) {
                checkControl(step.button, ControlCensus::Kind::Button, any.at, any.form);
                if (step.row.exists() && viewOf(chip_, any, step) == nullptr)
                    add(any.at, fmt::format("no view has the row {}", text(step.row)),
                        "Name the row of a view on the same form.");
                checkVariantNames(any.at, step.variants);
            }
    }

    void checkGivenBack(const Command& any) {
        const Register* owner = chip_.find(any.givenBack.owner);
        if (owner == nullptr || !owner->row.exists() || !owner->writable() ||
            owner->views.empty() || owner->row.form != any.form ||
            owner->views.front().row.form != any.form)
            add(any.at, fmt::format("\"{}\" cannot be given back", any.givenBack.owner),
                "Name a register of the same form that has a row and is read and written.");
        else if (((any.givenBack.inverted.mask() | any.givenBack.value) & ~owner->mask()) != 0)
            add(any.at, fmt::format("\"{}\" has {} bits", owner->title, owner->width()),
                "Name bits of it.");
    }

    void checkSums() {
        for (const StatusSum& sum : chip_.word.sums) {
            if (sum.bit >= chip_.word.bits)
                add(sum.at, fmt::format("a word has no bit {}", sum.bit), "Name a bit of it.");
            for (const ControlRange& any : sum.of)
                if (flagsShownBy(chip_, any).view == nullptr)
                    add(sum.at, fmt::format("no view of flags has the labels {}", any.name),
                        "Name labels of its row on the panel.");
        }
    }

    void checkVariantNames(const Place& at, const std::vector<std::string>& names) {
        for (const std::string& name : names)
            if (variants_.find(name) == variants_.end())
                add(at, fmt::format("there is no variant \"{}\"", name),
                    "Name one of the `titles` in `[variants]`.");
    }

    void checkVariants() {
        if (variants_.size() < chip_.variants.titles.size())
            add(chip_.variants.at, "two variants have one title", "Give each a title of its own.");
        if (chip_.variants.selected >= static_cast<int>(chip_.variants.titles.size()) &&
            chip_.variants.exists())
            add(chip_.variants.at, "the variant that is `selected` is not there",
                "Titles count from 0.");
        for (const Variants::Rule& rule : chip_.variants.rules) {
            checkVariantNames(rule.at, rule.on);
            for (const ControlRange& any : rule.controls)
                if (!hasParts_ && !found_.census.hasAny(any.name, any.first, any.last))
                    add(rule.at, fmt::format("there is no control {}", any.name),
                        found_.census.nearText({.name = any.name, .index = any.first}));
        }
        for (const Variants::Caption& caption : chip_.variants.captions) {
            checkVariantNames(caption.at, caption.on);
            if (!hasParts_)
                checkLabel(caption);
        }
    }

    void checkLabel(const Variants::Caption& caption) {
        if (found_.census.kindOf(caption.label) != ControlCensus::Kind::Label)
            add(caption.at, fmt::format("there is no label {}", text(caption.label)),
                found_.census.nearText(caption.label));
    }

    /// Pages that a part in C++ fills must have the names that the part expects.
    void checkPages() {
        constexpr std::array<std::string_view, 4> known{"registers", "flags", "sequence",
                                                        "automatic reads"};
        Names shown;
        for (const OuterPage& page : chip_.panel.pages) {
            shown.insert(page.shows);
            if (page.shows == "automatic reads" && !chip_.automaticReads.exists())
                add(chip_.panel.at, "nothing is read by itself",
                    "Add `[automatic_reads]`, or leave the page out.");
            if (!hasParts_ && std::find(known.begin(), known.end(), page.shows) == known.end())
                add(chip_.panel.at, fmt::format("nothing is called \"{}\"", page.shows),
                    R"(A page shows "registers", "flags", "sequence" or "automatic reads".)");
        }
        Names pages{std::string(statusPage)};
        for (const std::string& page : chip_.registerPages())
            pages.insert(page);
        if (shown.find("flags") != shown.end())
            pages.insert("Flags");
        for (const Register& any : chip_.registers)
            for (const View& view : any.views)
                if (!view.page.empty() && !hasParts_ && pages.find(view.page) == pages.end())
                    add(view.at, fmt::format("there is no page \"{}\"", view.page),
                        "Name a page of a register or of a command, or leave `page` out.");
    }

    void checkForms() {
        const std::string& form = chip_.panel.form;
        if (form.empty() || !isIdentifier(form))
            add(chip_.panel.at, fmt::format("\"{}\" is no name of a form", form),
                "Make it of letters, digits and underscores.");
        checkForm(chip_.word.status.form, chip_.word.at);
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

    void add(const Place& at, std::string text, std::string advice) {
        found_.add(at, std::move(text), std::move(advice));
    }

    const Findings& found_;
    const Chip& chip_;
    bool hasParts_; ///< in C++, which make controls and pages that are not in the file
    Names variants_;
    Names lines_{"Wait"};
    std::set<std::pair<std::string, std::string>> shared_; ///< write rows with their lines
};

} // namespace

void checkNames(const Findings& found) {
    NamesCheck(found).run();
}

} // namespace bitlux::chips
