// The addresses typed into a group's boxes: what the box is to show, and what is reported.
#include "view/AddressEditing.h"

#include "cameras/CamerasFixture.h"
#include "support/FileSizeLimit.h"

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{2, 3};
const QString kOld = QStringLiteral("http://cam/old.jpg");
const QString kNew = QStringLiteral("http://cam/new.jpg");

class AddressEditingTest : public CamerasFixture
{
protected:
    AddressEditingTest()
    {
        QObject::connect(&editing, &AddressEditing::addressChanged, &editing,
                         [this](CameraAddress, const QString &address) { changed << address; });
        table.setUrl(kCamera, kOld);
        editing.begin(kCamera.group);
    }

    AddressEditing editing{table, storage, problems};
    QStringList changed;
};

TEST_F(AddressEditingTest, StoresWhatWasTypedWithoutItsBlanks)
{
    editing.type(kCamera.row, kNew + u' ', kOld);
    EXPECT_EQ(table.url(kCamera), kOld);
    EXPECT_EQ(editing.leave(kCamera.row, kNew + u' '), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
    EXPECT_EQ(changed, QStringList{kNew});
}

TEST_F(AddressEditingTest, TellsNothingOfTheSameAddress)
{
    EXPECT_EQ(editing.leave(kCamera.row, kOld), kOld);
    EXPECT_EQ(changed, QStringList());
}

TEST_F(AddressEditingTest, LeavesATextThatCannotBeStoredInItsBox)
{
    editing.type(kCamera.row, QString(256, u'a'), kOld);
    EXPECT_EQ(editing.leave(kCamera.row, QString(256, u'a')), std::nullopt);
    EXPECT_EQ(table.url(kCamera), kOld);
    EXPECT_EQ(changed, QStringList());
    EXPECT_EQ(shown.size(), 1);
}

TEST_F(AddressEditingTest, ShowsWhatWasStoredMeanwhileWhenNothingElseWasTyped)
{
    editing.type(kCamera.row, kOld + u'x', kOld);
    table.setUrl(kCamera, kNew);
    EXPECT_EQ(editing.leave(kCamera.row, kOld), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
}

TEST_F(AddressEditingTest, ForgetsWhatWasTypedWithTheGroup)
{
    editing.type(kCamera.row, kOld + u'x', kOld);
    editing.begin(kCamera.group);
    table.setUrl(kCamera, kNew);
    EXPECT_EQ(editing.leave(kCamera.row, kOld + u'x'), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
}

TEST_F(AddressEditingTest, ForgetsWhatWasTypedOnceTheBoxShowsTheStoredAddress)
{
    editing.type(kCamera.row, kOld + u'x', kOld);
    editing.begin(kCamera);
    table.setUrl(kCamera, kNew);
    EXPECT_EQ(editing.leave(kCamera.row, kOld), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
}

TEST_F(AddressEditingTest, WhereNothingWasTypedShowsWhatAnotherProgramHasStored)
{
    table.setUrl(kCamera, kNew);
    EXPECT_EQ(editing.leave(kCamera.row, kOld), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
    EXPECT_EQ(changed, QStringList());
}

TEST_F(AddressEditingTest, KeepsATextThatCannotBeStoredInItsBoxWheneverItIsLeft)
{
    const QString tooLong(256, u'a');
    editing.type(kCamera.row, tooLong, kOld);
    EXPECT_EQ(editing.leave(kCamera.row, tooLong), std::nullopt);
    EXPECT_EQ(editing.leave(kCamera.row, tooLong), std::nullopt);
    EXPECT_EQ(shown.size(), 1);
}

// Whether the window has heard of the change or not.
TEST_F(AddressEditingTest, StartsFromTheAddressThatTheRowShows)
{
    table.setUrl(kCamera, kNew);
    editing.type(kCamera.row, kOld + u'x', kOld);
    EXPECT_EQ(editing.leave(kCamera.row, kOld), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
}

TEST_F(AddressEditingTest, TriesAgainToStoreWhatTheSettingsCouldNotTake)
{
    editing.type(kCamera.row, kNew, kOld);
    {
        const FileSizeLimit full(1);
        EXPECT_EQ(editing.leave(kCamera.row, kNew), kNew);
    }
    ASSERT_EQ(table.url(kCamera), kOld);
    EXPECT_EQ(editing.leave(kCamera.row, kNew), kNew);
    EXPECT_EQ(table.url(kCamera), kNew);
}

} // namespace
} // namespace velmora::test
