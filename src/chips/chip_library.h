#pragma once

#include "chips/chip_reader.h"
#include "chips/description.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::chips {

/// A chip of the product by name, parsed at the first request. Raises Failure (OutOfRange) with
/// near names for an unknown name.
ChipPtr embeddedChip(std::string_view name);

/// All problems of a file, one a line.
std::string describe(const Problems& problems, const std::string& file);

/// The available chips: those of the product, and those in files of users, each named like its
/// file. The folders are read at every request, and a file is parsed at the first request of its
/// chip; a damaged file does not affect the others.
class ChipLibrary {
public:
    struct Entry {
        std::string name;
        std::string file; ///< empty for a chip of the product
    };
    /// The result of keeping a file.
    struct Kept {
        enum class Outcome : std::uint8_t {
            Done,    ///< the file is in the user's folder now
            There,   ///< the same file was already there
            Exists,  ///< another file has the name and was not to be replaced
            Refused, ///< for the reasons in `problems`
        };
        Outcome outcome = Outcome::Refused;
        std::string name; ///< of the chip; empty when the file is damaged
        std::string file; ///< its place, or that of the file that has the name
        Problems problems;
    };

    /// The folder `chips` in each of dataFolders().
    ChipLibrary();
    /// The first folder is the user's own. A file hides those of the same name in later folders.
    /// Empty names and folders that do not exist are skipped.
    explicit ChipLibrary(std::vector<std::string> folders) : folders_(std::move(folders)) {}

    /// All chips by their names, parsed or not.
    [[nodiscard]] std::vector<Entry> entries() const;
    [[nodiscard]] std::vector<std::string> names() const;
    /// The user's files that are no chips by their names, with the reason. Files with invalid
    /// content are not included, since this does not parse them.
    [[nodiscard]] std::vector<std::string> leftOut() const;
    /// Whether a file of a user contains this chip.
    [[nodiscard]] bool isUsers(std::string_view name) const { return !fileOf(name).empty(); }

    /// Raises Failure (OutOfRange), with near names, unless there is such a file.
    void requireUsers(std::string_view name) const;
    /// A chip, parsed at the first request. Raises Failure: OutOfRange with near names when there
    /// is none, File with all problems when its file is damaged.
    ChipPtr chip(std::string_view name);
    /// The same, parsed again when the file has changed since. A chip already returned stays
    /// unchanged.
    ChipPtr refreshed(std::string_view name);

    /// Reads and checks a file from anywhere and copies it to the user's folder under the name of
    /// its chip. A file of that name is replaced only if `replaces` says so. Raises Failure (File)
    /// when the folder cannot be written.
    Kept keep(const std::string& fileName, bool replaces = false);

private:
    /// Identifies the version of a file that may be replaced or changed.
    struct Stamp {
        std::uint64_t device = 0;
        std::uint64_t node = 0;
        std::int64_t size = -1;
        std::int64_t changed = 0; ///< nanoseconds
        bool operator==(const Stamp&) const = default;
    };
    struct Known {
        ChipPtr chip;
        std::string file;
        Stamp stamp;
    };

    [[nodiscard]] std::string fileOf(std::string_view name) const;
    ChipPtr read(std::string_view name, const std::string& file);
    static Stamp stampOf(const std::string& file);

    std::vector<std::string> folders_;
    std::map<std::string, Known, std::less<>> known_; ///< of users, by name
};

/// What "NAME|FILE" of a command line or script means: a file when it has a "/" or ends in
/// ".toml", else the chip of this name, or the chip that has the device of this name. Raises
/// Failure as ChipLibrary::chip does; for a file it lists all problems.
ChipPtr chosenChip(ChipLibrary& library, const std::string& nameOrFile);

/// Problems of a chip in a file of a user beyond validate(): its name is that of a chip of the
/// product, or it uses something reserved for those.
Problems problemsOfUsersChip(const Chip& chip);

} // namespace bitlux::chips
