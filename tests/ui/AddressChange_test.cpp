// A camera on show gets another address: the browser leaves the images of the old one alone.
#include "SelectionTest.h"
#include "support/TypedAddress.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 0};
const QString kOther = QStringLiteral("http://other/picture.jpg");

class AddressChange : public SelectionTest
{
protected:
    void openOn(int images)
    {
        house_.openOn(images);
        house_.house.page.reread(); // knows the addresses from now on
    }

    /// As the row's box does when it is left.
    void type(const QString &address) { typeAddress(house_.house.page, kCamera.row, address); }

    /// As when another program says that it has changed the settings.
    void changeOutside(CameraAddress camera, const QString &address)
    {
        house_.house.table.setUrl(camera, address);
        house_.house.page.reread();
    }

    [[nodiscard]] QString folderOf(const QString &address)
    {
        const QString before = house_.house.table.url(kCamera);
        house_.house.table.setUrl(kCamera, address);
        const QString folder = house_.house.folder(kCamera);
        house_.house.table.setUrl(kCamera, before);
        return folder;
    }
};

TEST_F(AddressChange, TheImagesOfTheOldAddressAreNotShown)
{
    openOn(3);
    type(kOther);
    house_.settle();
    EXPECT_EQ(view(kImages).model()->rowCount(), 0);
    EXPECT_EQ(position(), QStringLiteral("0"));
    EXPECT_EQ(house_.shown(0), QString());
    EXPECT_EQ(house_.framed(), QList<int>());
    EXPECT_FALSE(isFilmEnabled());
    EXPECT_EQ(targetOfDelete(kImages), QString());
}

TEST_F(AddressChange, ItsFolderIsNotMadeForTheBrowser)
{
    openOn(3);
    type(kOther);
    house_.settle();
    EXPECT_FALSE(house_.house.tree.exists(folderOf(kOther)));
}

TEST_F(AddressChange, TheImagesOfTheNewAddressAreShown)
{
    openOn(3);
    house_.house.tree.write(folderOf(kOther) + u'/' + storedName(7), pictureBytes(Qt::red));
    type(kOther);
    house_.settle();
    expectImage(0, 1);
    EXPECT_EQ(listed(0), storedName(7));
}

TEST_F(AddressChange, TheImagesOfACameraThatIsRemovedAreNotShown)
{
    openOn(3);
    changeOutside(kCamera, QString());
    house_.settle();
    EXPECT_EQ(view(kImages).model()->rowCount(), 0);
    EXPECT_EQ(targetOfDelete(kImages), QString());
    EXPECT_EQ(house_.text(QStringLiteral("lCamera")), QStringLiteral("no camera"));
}

TEST_F(AddressChange, IsNoticedThoughItsTabIsChosenFirst)
{
    openOn(3);
    house_.house.page.load();
    house_.house.tree.write(folderOf(kOther) + u'/' + storedName(7), pictureBytes(Qt::red));
    house_.house.table.setUrl(kCamera, kOther);
    house_.house.page.Selecteur_Click(kCamera.group, WindowState::Visible);
    house_.house.page.reread();
    house_.settle();
    expectImage(0, 1);
    EXPECT_EQ(listed(0), storedName(7));
}

TEST_F(AddressChange, ThatOfAnotherCameraChangesNothing)
{
    openOn(3);
    house_.clickRow(kImages, 1);
    changeOutside({0, 5}, kOther);
    house_.settle();
    expectImage(1, 3);
}

TEST_F(AddressChange, InGroupViewItsNewestImageGoesAndTheRowStaysSelected)
{
    openGroup(2);
    house_.house.page.reread();
    expectCamera(2, 2);
    changeOutside({0, 2}, kOther);
    house_.settle();
    expectCamera(2, 0);
    EXPECT_EQ(house_.shown(2), QString());
    EXPECT_EQ(house_.shown(5), storedName(3));
    EXPECT_EQ(targetOfDelete(kRowsOfGroup), QString());
}

} // namespace
} // namespace velmora::test
