#include "chips/zt72518/diagram.h"
#include "chips/zt72518/flags.h"
#include "chips/zt72518/registers.h"
#include "chips/zt72518/variants.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::oldchips {
namespace {

using Names = std::set<std::string>;

std::string text(const ControlName& name) {
    return name.index < 0 ? std::string(name.name) : fmt::format("{}({})", name.name, name.index);
}

/// Walks the tables of a chip and collects what they name, complaining on the way.
class Walk {
public:
    explicit Walk(std::size_t width) : width_(width) {}

    void registers(std::span<const Register> rows) {
        for (const Register& row : rows) {
            const std::string where(row.title);
            if (rowsOfLabels.insert(std::string(row.writeLabels)).second)
                makeRow(where, row.writeLabels, 0, row.writeCaptions);
            make(where, row.writeButton);
            make(where, row.sequenceButton);
            fields(where, row);
            view(where, row.low);
            view(where, row.high);
            EXPECT_TRUE(row.low.exists()) << where;
        }
    }
    void view(const std::string& where, const ReadView& shown) {
        if (!shown.exists())
            return;
        makeRow(where, shown.labels, 0, shown.captions);
        make(where, shown.readButton);
        make(where, shown.sequenceButton);
        EXPECT_TRUE(shown.litColour == 0xFFFFC0 || shown.litColour == 0xFFC0C0) << where;
    }
    void make(const std::string& where, const ControlName& name) {
        const bool isNew = !name.exists() || made.insert(text(name)).second;
        EXPECT_TRUE(isNew) << where << " names " << text(name) << " twice";
    }
    void makeRow(const std::string& where, std::string_view labels, int first, BitCaptions bits) {
        EXPECT_EQ(bits.size(), width_) << where;
        for (int bit = first; const std::string_view caption : bits) {
            EXPECT_FALSE(caption.empty()) << where;
            make(where, {labels, bit++});
        }
    }
    void refer(const std::string& where, const ControlName& name) {
        if (name.exists())
            referred.emplace_back(where, text(name));
    }
    /// Everything is made now.
    void resolve() const {
        for (const auto& [where, name] : referred)
            EXPECT_TRUE(made.contains(name)) << where << " refers to " << name;
    }
    Names made;

private:
    void fields(const std::string& where, const Register& row) {
        unsigned taken = 0;
        const unsigned all = ~0U >> (32 - width_);
        const auto take = [&](unsigned bits) {
            EXPECT_EQ(bits & ~all, 0U) << where << " has a field outside its bits";
            EXPECT_EQ(taken & bits, 0U) << where << " has fields that overlap";
            taken |= bits;
        };
        for (const OptionField& field : row.options) {
            EXPECT_EQ(field.captions.size(), 1U << field.width) << where << " " << field.title;
            // Of twins that choose each other the second one tells the same bits.
            const bool isTwin = field.mirror.name == field.options;
            if (!isTwin || field.mirror.index > field.firstOption)
                take(((1U << field.width) - 1) << field.lowBit);
            for (int value = 0; value < static_cast<int>(field.captions.size()); ++value)
                make(where, {field.options, field.firstOption + value});
            make(where, field.frame);
            refer(where, field.gate);
            refer(where, field.mirror);
        }
        for (const CheckBit& check : row.checks) {
            take(1U << check.bit);
            make(where, check.box);
        }
        for (const ComboField& field : row.combos) {
            EXPECT_EQ(field.items.size(), 1U << field.bitOfIndexBit.size()) << field.combo;
            for (const int bit : field.bitOfIndexBit)
                take(1U << bit);
            make(where, {field.combo});
        }
    }

    std::size_t width_; ///< of every register
    Names rowsOfLabels;
    std::vector<std::pair<std::string, std::string>> referred;
};

Walk walkZt72518() {
    Walk walk(8);
    walk.registers(zt72518::registers);
    for (int i = 0; const zt72518::FlagRow& row : zt72518::lowFlagRows) {
        walk.makeRow(std::string(row.title), row.labels, row.firstLabel, row.captions);
        walk.make("flags", {"Cm_RFl", i});
        walk.make("flags", {"Seq_RFl", i++});
    }
    walk.make("flags", {"Seq_RFl", 7});
    for (int i = 0; const zt72518::FlagRow& row : zt72518::highFlagRows) {
        walk.makeRow(std::string(row.title), row.labels, row.firstLabel, row.captions);
        walk.make("flags", {"Cm_RFh", i});
        if (i < 4)
            walk.make("flags", {"Seq_RFh", i});
        ++i;
    }
    // What the panel makes beside the rows.
    for (int i = 0; i < 4; ++i)
        walk.make("watchdog refresh", {"R_Wd_Refresh", i});
    for (int i = 0; i < static_cast<int>(zt72518::modeButtons.size()); ++i)
        walk.make("diagram", {"Send_pre_prog", i});
    for (int i = 0; i < static_cast<int>(zt72518::modeBoxes.size()); ++i)
        walk.make("diagram", {"pre_prog_box", i});
    walk.make("diagram", {"read_pre_prog", 1});
    return walk;
}

TEST(Tables, OfTheZt72518NameEverythingOnceAndReferToWhatIsThere) {
    Walk walk = walkZt72518();
    const auto referAll = [&walk](const char* where, const auto& steps, auto nameOf) {
        for (const auto& step : steps)
            walk.refer(where, nameOf(step));
    };
    const auto same = [](const ControlName& name) { return name; };
    const auto button = [](const zt72518::ReadAllStep& step) { return step.button; };
    referAll("read all", zt72518::readAllLow, button);
    referAll("read all", zt72518::readAllHigh, button);
    referAll("read all", zt72518::readAllFlags, button);
    referAll("append all", zt72518::sequenceAllLow, same);
    referAll("append all", zt72518::sequenceAllHigh, same);
    referAll("append all", zt72518::sequenceAllFlags, same);
    referAll("diagram", zt72518::shownModes,
             [](const zt72518::ShownMode& mode) { return mode.highlight; });
    referAll("variants", zt72518::variantCaptions,
             [](const zt72518::VariantCaption& row) { return row.label; });
    referAll("variants", zt72518::variantBoxes, [](const zt72518::VariantBox& row) {
        return ControlName{"pre_prog_box", row.box};
    });
    for (const zt72518::VariantControls& row : zt72518::variantControls)
        if (row.first >= 0) {
            walk.refer("variants", {row.name, row.first});
            walk.refer("variants", {row.name, row.last});
        } else {
            const bool named = walk.made.contains(std::string(row.name)) ||
                               walk.made.contains(fmt::format("{}(0)", row.name));
            EXPECT_TRUE(named) << row.name;
        }
    walk.resolve();
}

TEST(Tables, OfTheZt72518PutEveryRegisterOnOnePageUnderItsAddress) {
    int next = 0;
    Names stems;
    for (const Register& row : zt72518::registers) {
        EXPECT_EQ(row.address, next++) << row.title;
        EXPECT_TRUE(row.stem.empty() || stems.insert(std::string(row.stem)).second) << row.stem;
    }
    std::set<int> shown;
    for (const zt72518::Page& page : zt72518::pages)
        for (int i = 0; i < page.count; ++i)
            EXPECT_TRUE(shown.insert(page.firstRegister + i).second) << page.title;
    EXPECT_EQ(shown.size(), zt72518::registers.size());
    for (const zt72518::ModeButton& button : zt72518::modeButtons)
        for (const zt72518::ModeWord& step : button.words) {
            EXPECT_LT(step.box, static_cast<int>(zt72518::modeBoxes.size())) << button.caption;
            EXPECT_TRUE(step.box >= 0 || !step.onlyWhereEnabled) << button.caption;
        }
}

} // namespace
} // namespace bitlux::oldchips
