#include "apps/chip/register_command.h"

#include "apps/chip/register_run.h"
#include "apps/chip/register_text.h"
#include "apps/json_text.h"
#include "platform/failure.h"
#include "registers/register_snapshot.h"
#include "registers/word_decoder.h"

#include <charconv>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

using Task = RegisterOptions::Task;

std::uint64_t hexWord(const std::string& text, const chips::WordFormat& format) {
    const std::string_view digits =
        text.starts_with("0x") || text.starts_with("0X") ? std::string_view(text).substr(2) : text;
    std::uint64_t word = 0;
    const char* end = digits.data() + digits.size();
    constexpr int hexadecimal = 16;
    const auto [stop, error] = std::from_chars(digits.data(), end, word, hexadecimal);
    if (error != std::errc{} || stop != end || (word & ~format.mask()) != 0)
        throw WrongUse(
            fmt::format("{}: This is no hexadecimal word of {} bits.", text, format.bits));
    return word;
}

std::string wordText(std::uint64_t word, const chips::WordFormat& format) {
    constexpr int bitsOfDigit = 4;
    return fmt::format("{:0{}X}", word, (format.bits + bitsOfDigit - 1) / bitsOfDigit);
}

/// Prints words without a bus.
class WordPrinter {
public:
    WordPrinter(const RegisterCatalog& catalog, std::ostream& output)
        : format_(catalog.chip().word), decoder_(catalog), output_(output) {}

    void printLines(std::uint64_t word, const std::optional<std::uint64_t>& answer) const {
        const DecodedWord meant = decoder_.decode(word);
        const std::string title = meant.title();
        fmt::print(output_, "{}  {}\n", wordText(word, format_),
                   title.empty() ? "no word of this chip" : title);
        if (meant.kind == DecodedWord::Kind::Write)
            fmt::print(output_, "{}\n", valueLines(*meant.item, meant.value));
        if (!answer)
            return;
        fmt::print(output_, "{}  answer\n", wordText(*answer, format_));
        if (const auto value = decoder_.valueIn(meant, *answer))
            fmt::print(output_, "{}\n", valueLines(*meant.item, *value));
        if (const std::string status = decoder_.statusIn(meant, *answer); !status.empty())
            fmt::print(output_, "Status: {}\n", status);
    }

    void printObject(std::uint64_t word, const std::optional<std::uint64_t>& answer) const {
        const DecodedWord meant = decoder_.decode(word);
        std::string members = fmt::format(R"("kind":"decoded","word":"{}","meaning":{})",
                                          wordText(word, format_), jsonString(meant.title()));
        if (meant.kind == DecodedWord::Kind::Write)
            members += R"(,"written":{)" + valueMembers(*meant.item, meant.value) + "}";
        if (answer) {
            members += fmt::format(R"(,"answer":"{}","status":{})", wordText(*answer, format_),
                                   jsonString(decoder_.statusIn(meant, *answer)));
            if (const auto value = decoder_.valueIn(meant, *answer))
                members += R"(,"read":{)" + valueMembers(*meant.item, *value) + "}";
        }
        fmt::print(output_, "{{{}}}\n", members);
    }

private:
    const chips::WordFormat& format_;
    WordDecoder decoder_;
    std::ostream& output_;
};

int decode(const RegisterOptions& options, std::ostream& output) {
    chips::ChipLibrary library;
    const RegisterCatalog catalog(chips::chosenChip(library, options.chip));
    const chips::WordFormat& format = catalog.chip().word;
    const std::uint64_t word = hexWord(options.names.front(), format);
    std::optional<std::uint64_t> answer;
    if (options.names.size() > 1)
        answer = hexWord(options.names.back(), format);
    const WordPrinter printer(catalog, output);
    if (options.command.outputs.json)
        printer.printObject(word, answer);
    else
        printer.printLines(word, answer);
    return 0;
}

/// Two snapshots in files, with or without the chip in front.
int compareFiles(const RegisterOptions& options, std::ostream& output) {
    chips::ChipLibrary library;
    const std::size_t first = options.names.size() - 2;
    const std::string& beforeFile = options.names[first];
    const std::string& afterFile = options.names[first + 1];
    const RegisterSnapshot before = readSnapshot(beforeFile);
    const RegisterCatalog catalog(first == 0 ? library.chip(before.chip)
                                             : chips::chosenChip(library, options.names.front()));
    const std::vector<SnapshotDifference> found =
        differences(catalog, fitted(catalog, before, beforeFile),
                    fitted(catalog, readSnapshot(afterFile), afterFile));
    for (const SnapshotDifference& any : found)
        fmt::print(output, "{}\n",
                   options.command.outputs.json
                       ? fmt::format(R"({{"kind":"difference",{}}})", changeMembers(any))
                       : differenceLines(any));
    return found.empty() ? 0 : differsError;
}

int sendWords(RegisterOptions options, std::ostream& output, std::ostream& errors) {
    chips::ChipLibrary library;
    if (options.task == Task::Diff) {
        options.chip = options.names.front();
        options.file = options.names.back();
    }
    const RegisterCatalog catalog(chips::chosenChip(library, options.chip));
    return RegisterRun(options, catalog, output, errors).run();
}

} // namespace

int runRegisterCommand(const RegisterOptions& options, std::ostream& output, std::ostream& errors) {
    try {
        if (options.task == Task::Decode)
            return decode(options, output);
        const bool isOfFiles = options.task == Task::Diff &&
                               (options.names.size() > 2 || isSnapshotFile(options.names.front()));
        return isOfFiles ? compareFiles(options, output) : sendWords(options, output, errors);
    } catch (const WrongUse& wrong) {
        fmt::print(errors, "{}\n", wrong.what());
        return usageError;
    } catch (const Failure& failure) {
        fmt::print(errors, "{}\n", failure.what());
        return 1;
    }
}

} // namespace bitlux
