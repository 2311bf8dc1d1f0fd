#include "os_answers.h"
#include "support/rows.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {

namespace {

using Names = std::vector<std::string>;

const std::string other = "{00000000-0000-0000-0000-000000000001}";
const Names named{std::string(dongleClass)};

Names ofVersion1(const std::string& properties) {
    return deviceInterfaceClasses(OsAnswers{.properties = properties, .set = {}}.ask(), 0x0200);
}

Names ofVersion2(const std::string& set) {
    return deviceInterfaceClasses(OsAnswers{.osString = {}, .properties = {}, .set = set}.ask(),
                                  0x0201);
}

TEST(OsDescriptors, ReadsThePropertiesThatNameAClass) {
    const std::string both = std::string(dongleClass) + '\0' + other + '\0' + '\0';
    const Rows<const char*, Property, Names> cases{
        {"one", one, named},
        {"without its zero", {"DeviceInterfaceGUID", std::string(dongleClass)}, named},
        {"many", {"DeviceInterfaceGUIDs\0"s, both, 7}, {std::string(dongleClass), other}},
        {"another name", {"Label\0"s, std::string(dongleClass) + '\0'}, {}},
        {"no text", {"DeviceInterfaceGUID\0"s, std::string(dongleClass) + '\0', 4}, {}},
        {"nothing", {"DeviceInterfaceGUID\0"s, ""}, {}},
    };
    for (const auto& [what, property, names] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(ofVersion1(version1(property1(property))), names);
        EXPECT_EQ(ofVersion2(version2(property2(property))), names);
    }
}

TEST(OsDescriptors, FindsTheClassAmongOthers) {
    const Property label{"Label\0"s, "Word dongle\0"s};
    EXPECT_EQ(ofVersion1(version1(property1(label) + property1(one), 2)), named);

    const std::string compatible = "\x14\0\3\0WINUSB\0\0\0\0\0\0\0\0\0\0"s;
    const std::string property = property2(one);
    const auto inFunction = [&](int interface) {
        return "\x08\0\2\0"s + static_cast<char>(interface) + '\0' +
               number(8 + compatible.size() + property.size(), 2) + compatible + property;
    };
    const auto inConfiguration = [](const std::string& function) {
        return "\x08\0\1\0\0\0"s + number(8 + function.size(), 2) + function;
    };
    EXPECT_EQ(ofVersion2(version2(compatible + property)), named);
    EXPECT_EQ(ofVersion2(version2(inConfiguration(inFunction(0)))), named);
    EXPECT_EQ(ofVersion2(version2(inConfiguration(inFunction(1)))), Names{});
    EXPECT_EQ(ofVersion2(version2(inConfiguration(inFunction(1) + inFunction(0)))), named);
}

TEST(OsDescriptors, TakesEveryCutForNoName) {
    const std::string properties = version1(property1(one));
    for (std::size_t length = 0; length < properties.size(); ++length) {
        std::string cut = properties.substr(0, length);
        EXPECT_EQ(ofVersion1(cut), Names{}) << length;
        if (length >= 4) {
            EXPECT_EQ(ofVersion1(cut.replace(0, 4, number(length, 4))), Names{}) << length;
        }
    }
    const std::string set = version2(property2(one));
    for (std::size_t length = 0; length < set.size(); ++length) {
        std::string cut = set.substr(0, length);
        EXPECT_EQ(ofVersion2(cut), Names{}) << length;
        if (length >= 10) {
            EXPECT_EQ(ofVersion2(cut.replace(8, 2, number(length, 2))), Names{}) << length;
        }
    }
    const OsAnswers whole{.osString = {}, .properties = {}, .set = set};
    for (std::size_t length = 0; length < whole.capabilities.size(); ++length) {
        OsAnswers cut = whole;
        cut.capabilities.resize(length);
        EXPECT_EQ(deviceInterfaceClasses(cut.ask(), 0x0201), Names{}) << length;
    }
}

TEST(OsDescriptors, AsksOnlyWhatTheDeviceMayKnow) {
    const Rows<std::uint16_t, std::string, std::vector<int>> cases{
        {0x0200, "", {0x03EE}},
        {0x0200, "no such string", {0x03EE}},
        {0x0201, "", {0x0F00, 0x03EE}}};
    for (const auto& [usbVersion, osString, values] : cases) {
        const OsAnswers answers{
            .osString = osString, .properties = {}, .capabilities = {}, .set = {}};
        std::vector<int> asked;
        const AskDevice ask = [&answers, &asked](const ControlQuestion& question) {
            asked.push_back(question.value);
            return answers.ask()(question);
        };
        EXPECT_EQ(deviceInterfaceClasses(ask, usbVersion), Names{});
        EXPECT_EQ(asked, values) << usbVersion;
    }
}

} // namespace

} // namespace bitlux::test
