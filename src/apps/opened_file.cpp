#include "apps/opened_file.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <fmt/format.h>

namespace bitlux {

void openConfiguration(Program& program, const std::string& fileName) {
    if (!Program::ValidFile(fileName))
        throw Failure(Failure::Kind::File,
                      fmt::format("There is no file \"{}\".", printable(fileName, 200)));
    program.mainForm().files.open(fileName);
}

} // namespace bitlux
