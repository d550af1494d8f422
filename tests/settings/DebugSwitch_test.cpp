// The "Debug" box: stored at once, loaded at the next start.
#include "settings/DebugSwitch.h"

#include "support/FakeClock.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmora {
namespace {

using test::FakeClock;
using test::TempTree;

class DebugSwitchTest : public testing::Test
{
protected:
    TempTree tree;
    FakeClock clock;
    EventLog log{tree.path(), clock};
    SettingsFile settings{tree.path()};
    DebugSwitch debug{settings, log};
};

TEST_F(DebugSwitchTest, IsOffOnAFreshInstallation)
{
    debug.load();
    EXPECT_FALSE(debug.isOn());
    EXPECT_EQ(tree.files(), QStringList()) << "reading stores nothing";
}

TEST_F(DebugSwitchTest, TakesTheStoredState)
{
    for (const auto &[stored, on] :
         {std::pair("1", true), {"0", false}, {"2", true}, {"x", false}}) {
        SCOPED_TRACE(stored);
        tree.write(u"Velmora.ini", QByteArray("[Control]\r\nDebug=") + stored + "\r\n");
        debug.load();
        EXPECT_EQ(debug.isOn(), on);
    }
}

TEST_F(DebugSwitchTest, StoresItsValueAtOnce)
{
    debug.set(true);
    EXPECT_EQ(settings.read(u"Control", u"Debug"), QStringLiteral("1"));
    EXPECT_TRUE(log.isOn());
    debug.set(false);
    EXPECT_EQ(settings.read(u"Control", u"Debug"), QStringLiteral("0"));
    EXPECT_FALSE(log.isOn());
}

} // namespace
} // namespace velmora
