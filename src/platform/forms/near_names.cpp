#include "platform/forms/near_names.h"

#include "platform/letters.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace bitlux::forms {

namespace {

/// Characters to insert, delete or replace to get from `a` to `b`.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced =
                diagonal + (smallLetter(a[i]) == smallLetter(b[j]) ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({row[j + 1] + 1, row[j] + 1, replaced}));
        }
    }
    return row.back();
}

} // namespace

std::vector<std::string> nearNames(std::string_view wanted, const std::vector<std::string>& names) {
    constexpr std::size_t most = 3;
    constexpr std::size_t longest = 64; // a longer name is no slip of a finger
    const auto begins = [wanted](const std::string& name) {
        return equalIgnoringCase(name.substr(0, wanted.size()), wanted);
    };
    // of equal distance those first that begin with what is wanted
    std::vector<std::tuple<std::size_t, bool, std::string>> ranked;
    if (wanted.size() <= longest)
        for (const std::string& name : names)
            if (const std::size_t distance = editDistance(wanted, name);
                distance <= wanted.size() / 3 + 1)
                ranked.emplace_back(distance, !begins(name), name);
    std::sort(ranked.begin(), ranked.end());
    std::vector<std::string> result;
    for (std::size_t i = 0; i < std::min(most, ranked.size()); ++i)
        result.push_back(std::move(std::get<std::string>(ranked[i])));
    return result;
}

} // namespace bitlux::forms
