#include "apps/chip/chip_choice.h"

#include "platform/failure.h"

namespace bitlux {

chips::ChipPtr chosenChip(chips::ChipLibrary& library, const std::string& nameOrFile) {
    if (nameOrFile.find('/') == std::string::npos && !nameOrFile.ends_with(".toml"))
        return library.chip(nameOrFile);
    chips::ChipFile file = chips::readChipFile(nameOrFile);
    if (!file.chip)
        throw Failure(Failure::Kind::File, chips::describe(file.problems, nameOrFile));
    return file.chip;
}

} // namespace bitlux
