#include "panels/common/snapshot_report.h"

#include <fmt/format.h>

namespace bitlux {

std::string SnapshotReport::text() const {
    std::string all = heading;
    for (const SnapshotDifference& any : lines) {
        const RegisterItem& item = *any.item;
        all += fmt::format("\n{} 0x{} -> 0x{}", item.name, item.hexOf(any.before.value_or(0)),
                           item.hexOf(any.after.value_or(0)));
        const std::string fields =
            changedFields(item, any.before.value_or(0), any.after.value_or(0));
        all += fields.empty() ? "" : ": " + fields;
    }
    return all;
}

} // namespace bitlux
