#include "program/decoded_words.h"

#include <optional>

namespace bitlux {

DecodedLog& DecodedWords::log() {
    log_.decodeBy(names_.decoder());
    return log_;
}

void DecodedWords::saveCsvAs() {
    const FileDialog dialog{.kind = FileDialog::Kind::Save,
                            .title = "Export Decoded Log",
                            .filter = "Comma-Separated Values (*.csv)|*.csv|All Files (*.*)|*.*",
                            .fileName = "log.csv"};
    const std::optional<std::string> name = desk_.fileDialogs.ask(dialog);
    if (!name)
        return;
    forms_.perform(dialog.title, [&] {
        const Hourglass hourglass(desk_.pointer);
        log().saveCsv(*name);
    });
}

} // namespace bitlux
