#include "apps/word_options.h"

#include "apps/outlet_options.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace bitlux {

namespace {

/// An option with one of two texts: the first is true and the default.
void addChoice(CLI::App& command, const std::string& name, const std::string& help,
               std::optional<bool>& choice, const std::string& yes, const std::string& usual,
               const std::string& other) {
    command
        .add_option_function<std::string>(
            name, [&choice, yes](const std::string& text) { choice = text == yes; }, help)
        ->check(CLI::IsMember({usual, other}))
        ->default_str(usual);
}

CLI::Validator fourPins() {
    return {[](const std::string& text) -> std::string {
                constexpr std::string_view dataOutPins = ",7,12,13,15,";
                constexpr std::string_view otherPins = ",2,3,4,5,6,7,8,9,";
                const std::vector<std::string> pins = splitAtCommas(text);
                bool good = pins.size() == 4;
                for (std::size_t i = 0; good && i < pins.size(); ++i)
                    good = (i == 3 ? dataOutPins : otherPins).find("," + pins[i] + ",") !=
                           std::string_view::npos;
                return good ? "" : "CS, DI and CLK are pins 2 to 9, DO is 7, 12, 13 or 15";
            },
            "CS,DI,CLK,DO"};
}

void addConfig(CLI::App& command, std::string& config) {
    command
        .add_option("--config", config,
                    "Take the settings from a configuration file; options go before it")
        ->type_name("FILE.spi");
}

void addShape(CLI::App& command, WordSettings& settings) {
    command
        .add_option("--bits", settings.bits,
                    "Bits of a word, 1 to 160, through the dongle 8, 16, 24, 32 or 40")
        ->check(CLI::Range(1, 160).description("NUMBER"))
        ->default_str("8");
    command.add_option("--type", settings.type, "SPI type")
        ->check(CLI::Range(1, 8))
        ->default_str("1");
    addChoice(command, "--order", "Which bit goes first", settings.msbFirst, "msb", "msb", "lsb");
}

void addLevels(CLI::App& command, WordSettings& settings) {
    addChoice(command, "--cs", "Level of chip select when asserted", settings.csHigh, "high", "low",
              "high");
    addChoice(command, "--di", "Level of a one on data in", settings.diHigh, "high", "high", "low");
    addChoice(command, "--do", "Level of a one on data out", settings.doHigh, "high", "high",
              "low");
}

void addPins(CLI::App& command, WordSettings& settings) {
    command
        .add_option_function<std::string>(
            "--pins",
            [&settings](const std::string& text) {
                const std::vector<std::string> pins = splitAtCommas(text);
                std::copy(pins.begin(), pins.end(), settings.pins.emplace().begin());
            },
            "Pins of the connector")
        ->check(fourPins())
        ->default_str("2,3,4,12");
}

} // namespace

void addWordOptions(CLI::App& command, WordOptions& options) {
    addConfig(command, options.config);
    addShape(command, options.settings);
    addLevels(command, options.settings);
    addPins(command, options.settings);
}

void addWiringOptions(CLI::App& command, WordOptions& options) {
    addConfig(command, options.config);
    addLevels(command, options.settings);
    addPins(command, options.settings);
}

} // namespace bitlux
