#pragma once

#include "registers/register_catalog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The values of a chip's registers at one time, by name.
struct RegisterSnapshot {
    struct Value {
        std::string name;
        std::uint64_t value = 0;
    };

    std::string chip; ///< name of the chip
    std::vector<Value> values;

    /// Null when there is none of this name.
    [[nodiscard]] const Value* find(std::string_view name) const;
};

/// A value that two snapshots do not have alike.
struct SnapshotDifference {
    const RegisterItem* item = nullptr;
    std::optional<std::uint64_t> before; ///< nothing where the first snapshot lacks it
    std::optional<std::uint64_t> after;

    /// The bits that differ; 0 where one of the values is missing.
    [[nodiscard]] std::uint64_t bits() const { return before && after ? *before ^ *after : 0; }
};

/// The values that differ, in the order of the chip's file. Volatile registers are left out.
std::vector<SnapshotDifference> differences(const RegisterCatalog& catalog,
                                            const RegisterSnapshot& before,
                                            const RegisterSnapshot& after);

/// A field that has another value.
struct FieldDifference {
    const NamedField* field = nullptr;
    std::uint64_t before = 0;
    std::uint64_t after = 0;
};

/// The fields that differ in two values, among those that count in one of them.
std::vector<FieldDifference> fieldDifferences(const RegisterItem& item, std::uint64_t before,
                                              std::uint64_t after);
/// The same in one line: "VDDrstD 10ms -> 1ms, WD_spi 0 -> 1".
std::string changedFields(const RegisterItem& item, std::uint64_t before, std::uint64_t after);

/// A TOML text: the chip, and a line for each register and view with its fields in a comment.
std::string snapshotText(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot);
/// Replaces the file atomically. Raises Failure (File).
void saveSnapshot(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot,
                  const std::string& fileName);

/// Whether the file is a snapshot and no description of a chip. False for one that is neither.
bool isSnapshotFile(const std::string& fileName);
/// Reads a snapshot. Raises Failure (File) that says what is wrong, with line and column.
RegisterSnapshot readSnapshot(const std::string& fileName);
/// The same values in the order of the chip's file and under the names of the catalog. Raises
/// Failure (File), with the file's name, when the snapshot is one of another chip, names something
/// that the chip lacks or that is there twice, or has a value that does not fit.
RegisterSnapshot fitted(const RegisterCatalog& catalog, const RegisterSnapshot& snapshot,
                        const std::string& fileName);

} // namespace bitlux
