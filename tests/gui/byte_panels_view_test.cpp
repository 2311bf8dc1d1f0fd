#include "panels/common/panel_form.h"
#include "window_bench.h"
#include "window_checks.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(BytePanelsView, SayThatNothingIsSentLeastSignificantBitFirst) {
    PanelWindow bench("zt72361", "ZT72361");
    const auto isShown = [&bench] {
        bench.get<forms::OptionButton>("ZT72361.OptIor(1)").setValue(true); // something to paint
        bench.get<forms::OptionButton>("ZT72361.OptIor(0)").setValue(true);
        bench.settle();
        for (const QLabel* label : inSight<QLabel>(*bench.panel))
            if (label->text().contains("least significant bit first"))
                return true;
        return false;
    };
    EXPECT_FALSE(isShown());
    bench.session().MSBFirst = ConstOff;
    EXPECT_TRUE(isShown());
}

} // namespace
} // namespace bitlux::test
