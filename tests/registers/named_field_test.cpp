#include "register_chip.h"

#include "platform/failure.h"

#include <tuple>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(NamedField, TakesNumbersAndTextsAndRefusesTheRest) {
    const RegisterCatalog catalog = registerCatalog();
    const RegisterItem& mode = catalog.item("Mode");
    const std::vector<std::tuple<std::string, std::string, std::string>> rows{
        {"State", "1", "1"},
        {"state", "0b11", "3"},
        {"State", "standby", "1"},
        {"State", "run_=_on", "3"},
        {"State", "7", "7"}, // no text, and a value all the same
        {"State", "8", "8 does not fit: State has 3 bits, at most 0x7"},
        {"State", "0x2", "2"},
        {"State", "2", "2"}, // a text of the same value
        {"State", "Standbye", "There is no value of State \"Standbye\". Did you mean Standby?"},
        {"Time", "3", "3"},
        {"Time", "soon", "Time takes a number, not \"soon\""},
        {"watch it", "1", "1"},
        {"WATCH_IT", "2", "2 does not fit: Watch it has 1 bits, at most 0x1"},
        {"Stat", "1", "There is no field of Mode \"Stat\". Did you mean State?"},
    };
    for (const auto& [field, text, wanted] : rows) {
        std::string found;
        try {
            found = std::to_string(mode.field(field, 0).codeFrom(text));
        } catch (const Failure& failure) {
            found = failure.what();
        }
        EXPECT_EQ(found, wanted) << field << "=" << text;
    }
}

TEST(NamedField, RefusesANumberThatIsTheTextOfAnotherValue) {
    NamedField field{
        .name = "Prescaler", .bits = chips::BitList::range(0, 3), .choices = {}, .condition = {}};
    field.choices = {{.text = "Normal", .code = 0}, {.text = "2", .code = 1}};
    try {
        static_cast<void>(field.codeFrom("2"));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "\"2\" is a value of Prescaler and the text of the value 1: "
                                     "write 0x2 or 0x1");
    }
}

TEST(RegisterItem, CountsAFieldOnlyWhereItsConditionHolds) {
    // Bit 3 of TIMCR says what its other bits mean.
    const RegisterCatalog catalog(chips::embeddedChip("zt72537"));
    const RegisterItem& timcr = catalog.item("timcr");
    EXPECT_EQ(timcr.summaryOf(0x3), "Timing of = Watch-Dog prescaler, Watch-Dog prescaler = 6");
    EXPECT_EQ(timcr.summaryOf(0xB), "Timing of = Cyclic sense, Cyclic sense = 60ms");
}

TEST(RegisterCatalog, NamesEveryValueOnce) {
    EXPECT_EQ(registerCatalog().names(), (std::vector<std::string>{"Mode", "Speed", "Faults", "Log",
                                                                   "Key", "Code", "Code state"}));
    for (const char* chip : {"zt72516", "zt72518", "zt72537", "zt72361"}) {
        const RegisterCatalog catalog(chips::embeddedChip(chip));
        for (const RegisterItem& any : catalog.items())
            EXPECT_EQ(catalog.find(any.name), &any) << chip << ": " << any.name;
    }
    const RegisterCatalog family(chips::embeddedChip("zt72518"));
    EXPECT_EQ(family.item("mode_rm_rfh").name, "Mode, High views"); // by its row
}

} // namespace
} // namespace bitlux::test
