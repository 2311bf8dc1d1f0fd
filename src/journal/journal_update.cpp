#include "journal/journal_update.h"

#include "journal/json_members.h"
#include "platform/line_reader.h"
#include "platform/text_file.h"

namespace bitlux {

void updateJournal(const std::string& fileName, const JournalAnswers& answers) {
    LineReader lines(fileName);
    std::string content;
    for (auto line = lines.next(); line; line = lines.next()) {
        Json object = Json::parse(*line, nullptr, false);
        if (object.is_discarded())
            break;
        const auto found = answers.find(lines.lineNumber());
        if (found == answers.end()) {
            content += *line;
        } else {
            const char* name = object["kind"] == "command" ? "answer" : "received";
            object[name] = found->second ? Json(*found->second) : Json();
            content += object.dump();
        }
        content += '\n';
    }
    replaceFile(fileName, content);
}

} // namespace bitlux
