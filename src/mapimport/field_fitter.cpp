#include "mapimport/field_fitter.h"

#include "chips/register_reader.h"
#include "mapimport/field_values.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

constexpr std::size_t mostFields = 256; ///< more than bits: fields may share them

} // namespace

bool isReserved(const MapField& field) {
    constexpr std::string_view word = "reserved";
    std::string name = field.name.substr(0, word.size());
    for (char& c : name)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return field.isReserved || name == word || name.substr(0, 4) == "rsvd";
}

std::vector<FittedField> FieldFitter::fit(const MapRegister& source, const FittedRegister& owner) {
    std::vector<FittedField> made;
    std::uint64_t taken = 0;
    for (const MapField& field : source.fields) {
        if (made.size() == mostFields) {
            note(field.at,
                 fmt::format("the fields of \"{}\" from here on are left out", owner.title),
                 fmt::format("A register has up to {} of them.", mostFields));
            break;
        }
        if (isReserved(field)) {
            if (reserved_++ == 0)
                firstReserved_ = field.at;
            continue;
        }
        const auto bits = static_cast<std::uint64_t>(owner.width);
        if (field.width == 0 || field.first >= bits || field.width > bits - field.first) {
            note(field.at,
                 fmt::format(R"(the field "{}" is left out: it has bits beyond the register "{}")",
                             field.name, owner.title),
                 fmt::format("The register has {} bits.", owner.width));
            continue;
        }
        FittedField one = fitted(field, owner);
        const std::uint64_t mask = chips::BitList::range(one.first, one.width).mask();
        if ((taken & mask) != 0) {
            one.shares = true;
            note(field.at,
                 fmt::format(R"("{}" of "{}" has bits that another field has too)", one.title,
                             owner.title),
                 "It shares them.");
        }
        taken |= mask;
        made.push_back(std::move(one));
    }
    return made;
}

FittedField FieldFitter::fitted(const MapField& source, const FittedRegister& owner) {
    FittedField made;
    made.first = static_cast<int>(source.first);
    made.width = static_cast<int>(source.width);
    bool isChanged = false;
    std::string wanted = cleanTitle(source.name, isChanged);
    if (chips::identifier(wanted).empty())
        wanted = fmt::format("Bit_{}", source.first);
    made.title = titles_.fieldTitle(owner.title, wanted);
    if (isChanged || made.title != wanted)
        note(source.at,
             fmt::format(R"(the field "{}" of "{}" became "{}")", source.name, owner.title,
                         made.title),
             "Titles and the names of controls differ from each other.");
    made.choices = choicesOf(source, made.width, notes_);
    made.note = noteOf(source, owner);
    return made;
}

/// What the file says of the field and of its values.
std::string FieldFitter::noteOf(const MapField& source, const FittedRegister& owner) {
    std::string text = source.description == source.name ? "" : source.description;
    for (const MapValue& value : source.values)
        if (!value.description.empty() && !value.name.empty() && value.description != value.name)
            text +=
                fmt::format("{}{}: {}", text.empty() ? "" : "; ", value.name, value.description);
    const bool isBoth =
        owner.access == chips::Access::ReadWrite || owner.access == chips::Access::WriteOneClears;
    if (isBoth && source.behaviour.readable != source.behaviour.writable)
        text += fmt::format("{}({})", text.empty() ? "" : " ",
                            source.behaviour.readable ? "read only" : "write only");
    bool isChanged = false;
    text = cleanText(text, longestNote, isChanged);
    if (isChanged)
        note(source.at, fmt::format("the description of \"{}\" was changed", source.name),
             "It was too long, or had characters that cannot be shown.");
    return text;
}

void FieldFitter::note(const chips::Place& at, std::string text, std::string advice) {
    notes_.push_back({at, std::move(text), std::move(advice)});
}

} // namespace bitlux::mapimport
