#include "apps/chip/import_command.h"

#include "apps/examples.h"
#include "chips/chip_library.h"
#include "mapimport/import_map.h"
#include "mapimport/xml_source.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/printable.h"
#include "platform/text_file.h"

#include <filesystem>
#include <fstream>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

constexpr std::size_t mostNotes = 200;
constexpr std::size_t longestSourceName = 1000;

class OptionAdder {
public:
    explicit OptionAdder(CLI::App& app) : app_(app) {}

    template <typename Number>
    void number(const char* name, std::optional<Number>& to, Number most, const char* purpose) {
        app_.add_option(name, to, purpose)
            ->check(CLI::Range(Number{1}, most).description("NUMBER"));
    }
    void bits(const char* name, chips::BitList& to, const char* purpose) {
        const std::function<void(const std::string&)> take = [name, &to](const std::string& text) {
            const std::optional<chips::BitList> list = chips::BitList::parse(text);
            if (!list)
                throw CLI::ValidationError(name, "takes bits, the highest first, such as 15:8");
            to = *list;
        };
        app_.add_option_function(name, take, purpose)->type_name("BITS");
    }
    template <typename Number>
    void hex(const char* name, Number& to, std::uint64_t least, const char* purpose) {
        const std::function<void(const std::string&)> take = [=, &to](const std::string& text) {
            const std::optional<std::uint64_t> number = hexNumber(text);
            if (!number || *number < least)
                throw CLI::ValidationError(name, "takes a hexadecimal number such as 4000");
            to = *number;
        };
        app_.add_option_function(name, take, purpose)->type_name("HEX");
    }

private:
    static std::optional<std::uint64_t> hexNumber(std::string_view text) {
        constexpr int hexadecimal = 16;
        if (text.starts_with("0x") || text.starts_with("0X"))
            text.remove_prefix(2);
        return wholeNumber<std::uint64_t>(text, hexadecimal);
    }

    CLI::App& app_;
};

void addWordOptions(CLI::App& app, mapimport::WordKeys& word) {
    constexpr int mostBits = 64;
    constexpr int types = 8;
    OptionAdder add(app);
    add.number("--bits", word.bits, mostBits, "Bits of a word");
    add.number("--type", word.type, types, "SPI type");
    app.add_flag("--packed", word.packed, "Whole bytes, for the dongle only");
    add.bits("--address", word.address, "Bits of a word that carry the address");
    add.bits("--data", word.data, "Bits of a word that carry the data");
    add.hex("--write", word.write, 0, "Bits that are set in each write");
    add.hex("--read", word.read, 0, "Bits that are set in each read");
    const std::function<void(const std::string&)> takeAnswer = [&word](const std::string& text) {
        word.answersNext = text == "next word";
    };
    app.add_option_function("--answer", takeAnswer, "When the chip answers")
        ->check(CLI::IsMember({"same word", "next word"}))
        ->type_name("");
    add.hex("--fetch", word.fetch, 0, "The word that fetches an answer");
}

/// Raises Failure. The reader reports a file that is too long.
std::string contentOf(const std::string& fileName) {
    std::error_code error;
    std::ifstream file;
    if (std::filesystem::is_regular_file(fileName, error))
        file.open(fileName, std::ios::binary);
    if (!file.is_open())
        throw Failure(Failure::Kind::File, fmt::format("{}: The file cannot be read.",
                                                       printable(fileName, longestSourceName)));
    std::string text;
    std::array<char, 65'536> block{};
    while (text.size() <= mapimport::longestSource &&
           (file.read(block.data(), block.size()), file.gcount() > 0))
        text.append(block.data(), static_cast<std::size_t>(file.gcount()));
    return text;
}

void printNotes(const chips::Problems& notes, const std::string& file, std::ostream& errors) {
    for (std::size_t i = 0; i < notes.size() && i < mostNotes; ++i)
        fmt::print(errors, "{}\n", describe(notes[i], file));
    if (notes.size() > mostNotes)
        fmt::print(errors, "and {} more\n", notes.size() - mostNotes);
}

/// What `bitlux chip check` will say of the file.
chips::Problems problemsOf(const std::string& text, const std::string& file) {
    const chips::ChipFile made = chips::readChip(text, file);
    return made.chip ? chips::problemsOfUsersChip(*made.chip) : made.problems;
}

} // namespace

void addImportCommand(CLI::App& chip, ImportCommandOptions& options) {
    CLI::App& app =
        *chip.add_subcommand("import", "Make a chip's file of a register map (IP-XACT, CMSIS-SVD)");
    app.add_option("FILE", options.source, "A register map (*.xml, *.svd)")->required();
    app.add_option("-o,--output", options.output, "The file; without it the chip is printed")
        ->type_name("FILE.toml");
    app.add_option("--only", options.import.only,
                   "A peripheral or address block to import; may be repeated")
        ->type_name("NAME")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    OptionAdder add(app);
    add.hex("--base", options.import.base, 0, "Address in the map that is 0 in the chip");
    add.hex("--step", options.import.step, 1,
            "Addresses in the map for each one in the chip, such as 4");
    addWordOptions(app, options.import.word);
    addExamples(app, {"bitlux chip import meter.svd --only ADC -o meter.toml",
                      "bitlux chip import meter.xml --bits 24 --address 22:16 --data 15:0 "
                      "--write 800000"});
    app.callback([&options] { options.isGiven = true; });
}

int runImportCommand(const ImportCommandOptions& options, std::ostream& output,
                     std::ostream& errors) {
    const std::string file = options.output.empty() ? "chip.toml" : options.output;
    mapimport::ImportOptions import = options.import;
    if (!chips::isChipName(std::filesystem::path(file).stem().native()))
        import.name = "imported";
    const mapimport::ImportedMap made =
        mapimport::importMap(contentOf(options.source), options.source, import);
    printNotes(made.notes, options.source, errors);
    if (!made.problems.empty()) {
        fmt::print(errors, "{}\n", chips::describe(made.problems, options.source));
        return 1;
    }
    if (options.output.empty())
        fmt::print(output, "{}", made.text);
    else
        replaceFile(options.output, made.text);
    const chips::Problems left = problemsOf(made.text, file);
    fmt::print(errors, "{} registers{}\n", made.registers,
               left.empty() ? "" : "; before the chip can be used:");
    printNotes(left, file, errors);
    return 0;
}

} // namespace bitlux
