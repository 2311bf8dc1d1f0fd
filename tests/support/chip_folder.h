#pragma once

#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <string>

#include <fmt/format.h>

namespace bitlux::test {

/// A user who has no chips but those that are written here. Must exist before the program does.
struct ChipFolder {
    /// A small chip, and the name of its file.
    std::string add(const std::string& name) const {
        return data.write(fmt::format("bitlux-forge/chips/{}.toml", name),
                          "[chip]\ntitle = \"A chip\"\n[word]\nbits = 8\n"
                          "[[command]]\ntitle = \"Reset\"\nword = 1\n");
    }

    TemporaryFolder data;
    EnvironmentVariable home{"XDG_DATA_HOME", data.path().c_str()};
    EnvironmentVariable machine{"XDG_DATA_DIRS", data.path("none").c_str()};
};

} // namespace bitlux::test
