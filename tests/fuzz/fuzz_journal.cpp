// Feeds bytes to the reader of journals. What it refuses is a failure with a text; what it takes
// has words that can be sent.

#include "journal/journal_reader.h"
#include "memory_file.h"
#include "platform/failure.h"
#include "sending/word_text.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bitlux;
    const fuzz::MemoryFile file(data, size);
    try {
        JournalReader reader(file.name());
        int bits = 0;
        for (auto entry = reader.next(); entry; entry = reader.next()) {
            if (const auto* settings = std::get_if<JournalSettings>(&entry->content))
                bits = settings->bits;
            if (const auto* word = std::get_if<JournalWord>(&entry->content))
                fuzz::require(word->sent.size() == static_cast<std::size_t>(hexDigits(bits)),
                              "a word of another length");
        }
    } catch (const Failure& failure) {
        fuzz::require(*failure.what() != '\0', "a failure without a text");
    }
    return 0;
}
