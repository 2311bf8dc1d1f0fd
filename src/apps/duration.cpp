#include "apps/duration.h"

#include "platform/time_units.h"

#include <charconv>

#include <CLI/CLI.hpp>

namespace bitlux {

std::optional<std::int64_t> durationFrom(std::string_view text) {
    constexpr double second = 1e9;
    constexpr double longest = 86'400 * second;
    double unit = millisecond;
    if (text.ends_with("ms")) {
        text.remove_suffix(2);
    } else if (text.ends_with('s')) {
        text.remove_suffix(1);
        unit = second;
    }
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isGood = error == std::errc{} && stop == end && number > 0;
    return isGood && number * unit <= longest
               ? std::optional(static_cast<std::int64_t>(number * unit))
               : std::nullopt;
}

CLI::Option& addDuration(CLI::App& command, const std::string& name, std::int64_t& nanoseconds,
                         const std::string& help) {
    return *command
                .add_option_function<std::string>(
                    name,
                    [name, &nanoseconds](const std::string& text) {
                        const std::optional<std::int64_t> duration = durationFrom(text);
                        if (!duration)
                            throw CLI::ValidationError(name, "takes a time such as 200ms or 1.5s");
                        nanoseconds = *duration;
                    },
                    help)
                ->type_name("TIME");
}

} // namespace bitlux
