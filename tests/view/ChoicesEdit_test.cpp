// Of a camera's sheet only what its user changed is stored, and only for that camera.
#include "view/ChoicesEdit.h"

#include "cameras/CameraTable.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};
const QString kUrl = QStringLiteral("http://a/a.jpg");

class ChoicesEditTest : public testing::Test
{
protected:
    ChoicesEditTest() { settings_.write(u"Liste0", u"lst3", kUrl); }

    CameraFields begin()
    {
        const CameraFields stored = edit_.begin(kCamera);
        edit_.setFilled(stored);
        return stored;
    }

    [[nodiscard]] QString name() const { return cameraName(settings_.snapshot(), kCamera); }

    [[nodiscard]] CameraLogin login() const { return cameraLogin(settings_.snapshot(), kCamera); }

    TempTree tree_;
    SettingsFile settings_{tree_.path()};
    ChoicesEdit edit_{settings_};
};

TEST_F(ChoicesEditTest, BeginsWithWhatIsStored)
{
    settings_.write(u"Camera03", u"Name", QStringLiteral("Yard"));
    const CameraFields stored = begin();
    EXPECT_EQ(stored.name, QStringLiteral("Yard"));
    EXPECT_EQ(stored.address, kUrl);
    EXPECT_EQ(edit_.title(), QStringLiteral("0:3 Yard"));
    EXPECT_FALSE(edit_.isChanged(stored));
}

TEST_F(ChoicesEditTest, LeavesAloneWhatTheUserHasNotChanged)
{
    CameraFields now = begin();
    settings_.write(u"Camera03", u"Name", QStringLiteral("Elsewhere"));
    now.login = {QStringLiteral("me"), QStringLiteral("pw")};
    EXPECT_TRUE(edit_.isChanged(now));
    EXPECT_EQ(edit_.store(now), SettingsChange::Made);
    EXPECT_EQ(name(), QStringLiteral("Elsewhere"));
    EXPECT_EQ(login(), now.login);
}

TEST_F(ChoicesEditTest, RefusesWhatTheSettingsCannotHold)
{
    CameraFields now = begin();
    now.name = QString(kMaxNameLength + 1, u'x');
    EXPECT_EQ(edit_.refusal(now), nameRefusal(now.name));
    EXPECT_TRUE(edit_.refusal(now));
}

TEST_F(ChoicesEditTest, RefusesARowThatHasGotAnotherCamera)
{
    const CameraFields now = begin();
    EXPECT_FALSE(edit_.refusal(now));
    settings_.write(u"Liste0", u"lst3", QStringLiteral("http://other/"));
    ASSERT_TRUE(edit_.refusal(now));
    EXPECT_TRUE(edit_.refusal(now)->contains(QStringLiteral("another address meanwhile")));
}

TEST_F(ChoicesEditTest, GoesOnWithTheAddressThatTheSheetGaveTheRow)
{
    CameraFields now = begin();
    now.address = QStringLiteral("http://new/");
    EXPECT_TRUE(edit_.changesAddress(now));
    settings_.write(u"Liste0", u"lst3", now.address);
    edit_.followAddress();
    EXPECT_FALSE(edit_.refusal(now));
}

// The row, which was given another address, has forgotten the login beside the old one.
TEST_F(ChoicesEditTest, StoresTheLoginBesideANewAddress)
{
    settings_.write(u"Camera03", u"User", QStringLiteral("me"));
    CameraFields now = begin();
    ASSERT_EQ(now.login.user, QStringLiteral("me"));
    settings_.write(u"Camera03", u"User", QString());
    now.address = QStringLiteral("http://new/");
    EXPECT_EQ(edit_.store(now), SettingsChange::Made);
    EXPECT_EQ(login().user, QStringLiteral("me"));
}

TEST_F(ChoicesEditTest, ChoosesNothingForARowThatWasEmptied)
{
    CameraFields now = begin();
    now.address.clear();
    now.name = QStringLiteral("Yard");
    EXPECT_EQ(edit_.store(now), SettingsChange::Made);
    EXPECT_EQ(name(), QString());
}

} // namespace
} // namespace velmora::test
