#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include "bench/chosen_marker_files.h"
#include "platform/linux/user_marker_files.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(MarkerFiles, AreThereByNameInAnyCase) {
    const TemporaryFolder home;
    const EnvironmentVariable config("XDG_CONFIG_HOME", home.path().c_str());
    const UserMarkerFiles user;
    EXPECT_FALSE(user.present("72516TM.TXT")) << "without the folder";

    home.write("bitlux-forge/72516tm.txt", "");
    home.write("bitlux-forge/72518VBopt.txt.old", "");
    std::filesystem::create_symlink("nothing", home.path("bitlux-forge/72518vbopt.txt"));
    std::filesystem::create_directory(home.path("bitlux-forge/72518VBopt.txt"));
    const ChosenMarkerFiles chosen({"72516tm.txt"});
    for (const MarkerFiles* files :
         {static_cast<const MarkerFiles*>(&user), static_cast<const MarkerFiles*>(&chosen)}) {
        EXPECT_TRUE(files->present("72516TM.TXT"));
        EXPECT_FALSE(files->present("72518VBopt.txt"));
        EXPECT_FALSE(files->present("72516TM.TX"));
    }

    home.write("bitlux-forge/72518VBOPT.TXT", "");
    EXPECT_TRUE(user.present("72518VBopt.txt")) << "looks again";
}

} // namespace
} // namespace bitlux::test
