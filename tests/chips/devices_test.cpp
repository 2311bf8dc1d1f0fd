#include "chips/chip_reader.h"
#include "chips/embedded_chips.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::chips {
namespace {

TEST(Devices, OfTheProductAreListedAsInTheirFiles) {
    for (const EmbeddedChip& any : embeddedChips()) {
        const ChipFile file = readChip(any.text, std::string(any.name) + ".toml");
        ASSERT_NE(file.chip, nullptr) << any.name;
        std::set<std::pair<std::string, std::string>> listed;
        std::set<std::pair<std::string, std::string>> written;
        std::set<std::string_view> descriptions;
        for (const EmbeddedChip::Device& device : any.devices) {
            listed.emplace(device.name, device.description);
            descriptions.insert(device.description);
        }
        for (const Device& device : file.chip->devices)
            written.emplace(device.name, file.chip->description +
                                             (device.description.empty() ? "" : ". ") +
                                             device.description);
        EXPECT_EQ(listed, written);
        EXPECT_EQ(descriptions.size(), any.devices.size()) << "a list distinguishes them";
    }
}

TEST(Devices, AreCheckedWithTheirResets) {
    const std::string chip = R"(
chip = { title = "Lamp" }
word = { bits = 8, address = "6:5", data = "3:0", write = 0x80, flags = 0x10 }
[[register]]
title = "Level"
address = 1
width = 4
view = [{}, { title = "Flags", reads = "flags", bits = ["A", "B"], reset = 3 }]
)";
    const ChipFile plain = readChip(chip, "lamp.toml");
    ASSERT_NE(plain.chip, nullptr);
    EXPECT_NE(plain.chip->findDevice("lamp"), nullptr) << "a chip without devices is one";

    for (const auto& [device, expected] :
         {std::pair{"name = \"x\"\nreset = [{ register = \"Level\", value = 15 }, { register = "
                    "\"Level\", view = \"Flags\", value = 3 }]",
                    ""},
          {"reset = []", "9:1: `name` is missing"},
          {"name = \"a b\"", "9:1: \"a b\" is no name of a device"},
          {"name = \"x\"\n[[device]]\nname = \"x\"", "11:1: there are two devices \"x\""},
          {"name = \"x\"\nvariant = \"y\"", "9:1: there is no variant \"y\""},
          {"name = \"x\"\nreset = { register = \"Lever\" }",
           "11:9: there is no register \"Lever\""},
          {"name = \"x\"\nreset = { register = \"Level\", view = \"Read\" }",
           "11:9: \"Level\" has no view \"Read\" with a value of its own"},
          {"name = \"x\"\nreset = { register = \"Level\", view = \"Flags\", value = 4 }",
           "11:9: the reset value has too many bits"}}) {
        const ChipFile file = readChip(chip + "[[device]]\n" + device, "lamp.toml");
        const Problem none;
        const Problem& found = file.problems.empty() ? none : file.problems.front();
        EXPECT_EQ(file.problems.empty()
                      ? ""
                      : fmt::format("{}:{}: {}", found.at.line, found.at.column, found.text),
                  expected)
            << device;
    }
    const std::string tooMuch = std::string(chip).replace(chip.find("reset = 3"), 9, "reset = 4");
    const ChipFile wide = readChip(tooMuch, "lamp.toml");
    ASSERT_EQ(wide.problems.size(), 1U);
    EXPECT_EQ(wide.problems.front().text, "the reset value has more than 2 bits");
}

} // namespace
} // namespace bitlux::chips
