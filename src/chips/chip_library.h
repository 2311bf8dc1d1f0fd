#pragma once

#include "chips/chip_reader.h"
#include "chips/description.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::chips {

/// A chip of the product by name, read when it is first asked for. Raises Failure (OutOfRange) that
/// tells near names for any other name.
ChipPtr embeddedChip(std::string_view name);

/// All problems of a file, one a line.
std::string describe(const Problems& problems, const std::string& file);

/// The chips that there are: those of the product, and those in files of users, each named as its
/// file is. It looks at the folders when it is asked, and reads a file when its chip is first asked
/// for; one that is damaged hinders no other.
class ChipLibrary {
public:
    struct Entry {
        std::string name;
        std::string file; ///< empty for a chip of the product
    };
    /// What became of a file that was to be kept.
    struct Kept {
        enum class Outcome : std::uint8_t {
            Done,    ///< it is in the user's folder now
            There,   ///< it was there already, byte for byte
            Exists,  ///< another file has the name, and was to stay
            Refused, ///< `problems` tell why
        };
        Outcome outcome = Outcome::Refused;
        std::string name; ///< of the chip; empty when the file is damaged
        std::string file; ///< where it is, or the one that has the name
        Problems problems;
    };

    /// The folder `chips` in each of dataFolders().
    ChipLibrary();
    /// The first folder is the user's own. A file hides those of its name in later folders. Empty
    /// names and folders that do not exist have no files.
    explicit ChipLibrary(std::vector<std::string> folders) : folders_(std::move(folders)) {}

    /// All of them by their names, read or not.
    [[nodiscard]] std::vector<Entry> entries() const;
    [[nodiscard]] std::vector<std::string> names() const;
    /// The user's files that stand for no chip, with the reason. Those whose content is wrong are
    /// not among them: they are not read for it.
    [[nodiscard]] std::vector<std::string> leftOut() const;
    /// Whether there is a file of a user with this chip.
    [[nodiscard]] bool isUsers(std::string_view name) const { return !fileOf(name).empty(); }

    /// Raises Failure (OutOfRange), with near names, unless there is such a file.
    void requireUsers(std::string_view name) const;
    /// A chip, read at the first time. Raises Failure: OutOfRange with near names when there is
    /// none, File with all problems when its file is damaged.
    ChipPtr chip(std::string_view name);
    /// The same, read again when the file is another one than at that time. A chip that somebody
    /// holds stays as it is.
    ChipPtr refreshed(std::string_view name);

    /// Reads and checks a file from anywhere and copies it to the user's folder under the name of
    /// its chip. A file of that name is replaced only if `replaces` says so. Raises Failure (File)
    /// when the folder cannot be written.
    Kept keep(const std::string& fileName, bool replaces = false);

private:
    /// By what a file that was replaced or changed differs from before.
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

/// What "NAME|FILE" of a command line or script stands for: a file when it has a "/" or ends in
/// ".toml", else the chip of this name, or the chip that has the device of this name. Raises
/// Failure as ChipLibrary::chip does; of a file it tells all problems.
ChipPtr chosenChip(ChipLibrary& library, const std::string& nameOrFile);

/// What is wrong with a chip in a file of a user beyond what validate() finds: its name is that of
/// a chip of the product, or it wants something that only those have.
Problems problemsOfUsersChip(const Chip& chip);

} // namespace bitlux::chips
