#include "mapimport/register_fitter.h"

#include "chips/register_reader.h"
#include "mapimport/field_fitter.h"
#include "mapimport/titles.h"

#include <algorithm>
#include <map>
#include <optional>

#include <fmt/format.h>

namespace bitlux::mapimport {

namespace {

using chips::Access;
using Write = Behaviour::Write;

constexpr std::uint64_t widestRegister = 64;
constexpr std::size_t longestDescription = 200;

/// What reads and writes do to a register as a whole.
struct Effects {
    bool readable = false;
    bool writable = false;
    bool readChanges = false;
    bool isVolatile = false;
    bool oneClears = false; ///< all of it that can be written
    bool isMixed = false;   ///< writes do to some fields more than set them

    void take(const Behaviour& part) {
        readable = readable || part.readable;
        readChanges = readChanges || part.readChanges;
        isVolatile = isVolatile || part.isVolatile;
        if (!part.writable)
            return;
        const bool clears = part.write == Write::OneClears;
        isMixed = isMixed || part.write == Write::Other || (writable && clears != oneClears);
        oneClears = clears && (oneClears || !writable);
        writable = true;
    }

    [[nodiscard]] Access access() const {
        if (!writable)
            return readChanges ? Access::ReadClears : Access::ReadOnly;
        if (!readable)
            return Access::WriteOnly;
        return oneClears && !isMixed ? Access::WriteOneClears : Access::ReadWrite;
    }
};

Effects effectsOf(const MapRegister& source) {
    Effects effects;
    for (const MapField& field : source.fields)
        if (!isReserved(field))
            effects.take(field.behaviour);
    if (!effects.readable && !effects.writable)
        effects.take(source.behaviour);
    effects.isVolatile = effects.isVolatile || source.behaviour.isVolatile;
    effects.readChanges = effects.readChanges || source.behaviour.readChanges;
    return effects;
}

class RegisterFitter {
public:
    RegisterFitter(const ImportOptions& options, chips::Problems& notes)
        : options_(options), notes_(notes), fields_(titles_, notes) {}

    FittedChip run(const SourceMap& map) {
        FittedChip chip;
        bool isChanged = false;
        chip.title = cleanTitle(map.title, isChanged);
        if (chip.title.empty())
            chip.title = "Imported chip";
        chip.description = cleanText(map.description, longestDescription, isChanged);
        for (const MapRegister& source : map.registers)
            ++uses_[chips::identifier(source.name)];
        for (const MapRegister& source : map.registers)
            if (std::optional<FittedRegister> made = fit(source))
                chip.registers.push_back(*std::move(made));
        if (fields_.reserved() > 0)
            note(fields_.firstReserved(),
                 fmt::format("reserved fields are left out: {}", fields_.reserved()),
                 "This is the first one.");
        return chip;
    }

private:
    std::optional<FittedRegister> fit(const MapRegister& source) {
        FittedRegister made;
        if (!placeInWords(source, made))
            return std::nullopt;
        const Effects effects = effectsOf(source);
        made.access = effects.access();
        if (!takeAddress(source, made))
            return std::nullopt;
        made.isVolatile = effects.isVolatile || effects.isMixed;
        made.readClears = effects.readChanges && made.access != Access::ReadClears &&
                          made.access != Access::WriteOnly;
        nameRegister(source, made);
        made.fields = fields_.fit(source, made);
        made.note = noteOf(source, effects);
        if (effects.isMixed)
            note(source.at, fmt::format("writes of \"{}\" do more than set its bits", made.title),
                 "It is marked as volatile; its note names the fields.");
        return made;
    }

    /// Address and width; false for a register that no word of the chip reaches.
    bool placeInWords(const MapRegister& source, FittedRegister& made) {
        const chips::BitList& address = options_.word.address;
        const std::uint64_t offset = source.address - options_.base;
        if (source.address < options_.base || offset % options_.step != 0)
            return leaveOut(source, fmt::format("it is at 0x{:X}", source.address),
                            "Correct --base and --step.");
        made.address = offset / options_.step;
        if (!address.empty() && made.address > address.largest())
            return leaveOut(source,
                            fmt::format("its address 0x{:X} has more than {} bits", made.address,
                                        address.size()),
                            "Give more bits to --address, or a --base or --step.");
        return fitWidth(source, made);
    }

    bool fitWidth(const MapRegister& source, FittedRegister& made) {
        const auto data = static_cast<std::uint64_t>(options_.word.data.size());
        const std::uint64_t widest = data == 0 ? widestRegister : data;
        std::uint64_t used = 0;
        for (const MapField& field : source.fields)
            if (!isReserved(field) && field.first < source.width)
                used = std::max(used, field.first + std::min(field.width, source.width));
        made.width = static_cast<int>(std::min(source.width, widest));
        if (source.width == 0 || (source.width > widest && (used == 0 || used > widest)))
            return leaveOut(source, fmt::format("it has {} bits", source.width),
                            fmt::format("Up to {} bits are possible.", widest));
        made.reset = source.reset & chips::BitList::range(0, made.width).mask();
        if (source.width > widest)
            note(source.at,
                 fmt::format("\"{}\" is shortened from {} to {} bits", source.name, source.width,
                             widest),
                 "No field is beyond them.");
        if (made.reset != source.reset)
            note(source.at,
                 fmt::format("the reset value of \"{}\" is shortened to {} bits", source.name,
                             made.width),
                 "It had more.");
        return true;
    }

    /// A word reads one register, and another one writes one.
    bool takeAddress(const MapRegister& source, FittedRegister& made) {
        Users& users = users_[made.address];
        const bool reads = made.access != Access::WriteOnly;
        const bool writes = made.access != Access::ReadOnly && made.access != Access::ReadClears;
        const bool readsToo = reads && !users.reader.empty();
        const bool writesToo = writes && !users.writer.empty();
        const std::string& other = readsToo ? users.reader : users.writer;
        if ((readsToo || writesToo) && (!reads || readsToo) && (!writes || writesToo))
            return leaveOut(source, fmt::format("it has the address of \"{}\"", other),
                            "Describe it as fields with `shares` there.");
        if (readsToo || writesToo) {
            made.access = readsToo ? Access::WriteOnly : Access::ReadOnly;
            note(source.at,
                 fmt::format(R"("{}" can only be {}: it has the address of "{}")", source.name,
                             readsToo ? "written" : "read", other),
                 "One word reads one register.");
        }
        if (reads && !readsToo)
            users.reader = source.name;
        if (writes && !writesToo)
            users.writer = source.name;
        return true;
    }

    bool leaveOut(const MapRegister& source, const std::string& reason, std::string advice) {
        note(source.at, fmt::format("\"{}\" is left out: {}", source.name, reason),
             std::move(advice));
        return false;
    }

    /// The block precedes the name if another block has the same name.
    void nameRegister(const MapRegister& source, FittedRegister& made) {
        bool isChanged = false;
        const bool isShared = uses_[chips::identifier(source.name)] > 1;
        std::string wanted =
            cleanTitle(isShared ? source.block + "_" + source.name : source.name, isChanged);
        if (chips::identifier(wanted).empty())
            wanted = fmt::format("Register_{:X}", made.address);
        made.title = titles_.registerTitle(wanted);
        if (isChanged || made.title != wanted)
            note(source.at, fmt::format(R"("{}" became "{}")", source.name, made.title),
                 "Titles and the names of controls differ from each other.");
        made.page = cleanTitle(source.block, isChanged);
        if (made.page.empty() || made.page == chips::statusPage)
            made.page += "Registers";
    }

    std::string noteOf(const MapRegister& source, const Effects& effects) {
        std::string text = source.description == source.name ? "" : source.description;
        for (const MapField& field : source.fields)
            if (effects.isMixed && field.behaviour.writable && field.behaviour.write != Write::Sets)
                text += fmt::format("{}{}: {}", text.empty() ? "" : "; ", field.name,
                                    field.behaviour.writeName);
        if (effects.isMixed && source.fields.empty())
            text += fmt::format("{}({})", text.empty() ? "" : " ", source.behaviour.writeName);
        bool isChanged = false;
        text = cleanText(text, longestNote, isChanged);
        if (isChanged)
            note(source.at, fmt::format("the description of \"{}\" was changed", source.name),
                 "It was too long, or had characters that cannot be shown.");
        return text;
    }

    void note(const chips::Place& at, std::string text, std::string advice) {
        notes_.push_back({at, std::move(text), std::move(advice)});
    }

    /// Titles in the source of what an address reads and writes.
    struct Users {
        std::string reader;
        std::string writer;
    };

    const ImportOptions& options_;
    chips::Problems& notes_;
    TitleBook titles_;
    FieldFitter fields_;
    std::map<std::string, int> uses_; ///< registers, by their names as identifiers
    std::map<std::uint64_t, Users> users_;
};

} // namespace

FittedChip fitted(const SourceMap& map, const ImportOptions& options, chips::Problems& notes) {
    return RegisterFitter(options, notes).run(map);
}

} // namespace bitlux::mapimport
