#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace bitlux::test {

/// A new folder that goes away with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "bitlux-XXXXXX").string()) {
        if (::mkdtemp(path_.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        std::filesystem::permissions(path_, std::filesystem::perms{0755});
    }
    ~TemporaryFolder() {
        std::error_code ignored; // a test may have taken its permissions away
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// The full name of something in the folder.
    [[nodiscard]] std::string path(const std::string& name) const { return path_ + "/" + name; }

    /// Writes a file and returns its full name; folders on the way are created.
    std::string write(const std::string& name, std::string_view content) const {
        const std::filesystem::path file = std::filesystem::path(path_) / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file.string();
    }

private:
    std::string path_;
};

} // namespace bitlux::test
