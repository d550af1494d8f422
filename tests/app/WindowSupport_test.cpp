// What windows need of the system, seen before the toolkit is asked for them.
#include "app/WindowSupport.h"

#include "support/ScopedEnv.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kProgram = QStringLiteral("velmora");

class WindowSupport : public testing::Test
{
    const ScopedEnv noPlatform_{"QT_QPA_PLATFORM", ""};
    const ScopedEnv noDisplay_{"DISPLAY", ""};
    const ScopedEnv noWayland_{"WAYLAND_DISPLAY", ""};
};

TEST_F(WindowSupport, NamesADisplayWithTheToolkitsOption)
{
    EXPECT_FALSE(namesDisplay({kProgram}));
    EXPECT_TRUE(namesDisplay({kProgram, QStringLiteral("-display"), QStringLiteral(":1")}));
}

TEST_F(WindowSupport, MissesADisplayThatNothingNames)
{
    EXPECT_EQ(missingForWindows({kProgram}), kNoDisplay);
    EXPECT_EQ(missingForWindows({kProgram, QStringLiteral("-platform"), QStringLiteral("any")}),
              QString());
}

} // namespace
} // namespace velmora::test
