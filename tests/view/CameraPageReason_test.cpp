// What a row says about its camera, and what it says when its address changes.
#include "cameras/CamerasFixture.h"
#include "support/TypedAddress.h"
#include "view/CameraPage.h"

namespace velmora {
namespace {

using test::CamerasFixture;
using test::typeAddress;

class RowReason : public CamerasFixture
{
protected:
    RowReason()
    {
        store("[Liste0]\r\nlst1=a\r\nlst2=b\r\n[Groupe0]\r\nSB1=255\r\nSB2=65280\r\n");
        page.load();
        page.Selecteur_Click(0, WindowState::Visible);
        QObject::connect(&page, &CameraPage::addressStored, &page,
                         [this](CameraAddress camera) { told.append(camera.row); });
    }

    CameraPage page{table, storage, log, problems};
    QList<int> told;
};

TEST_F(RowReason, IsThatOfTheLastDownload)
{
    page.remarks().set({0, 1}, QStringLiteral("out"));
    EXPECT_EQ(page.reason(1), QStringLiteral("out"));
}

TEST_F(RowReason, IsNoneOfARowWithoutAddress)
{
    EXPECT_EQ(page.row(0).lamp, LampColour::Red);
    EXPECT_EQ(page.reason(0), QString());
}

TEST_F(RowReason, IsNotKnownOfADownloadBeforeTheStart)
{
    EXPECT_EQ(page.reason(1), QStringLiteral("the last download failed"));
}

TEST_F(RowReason, IsNoneOfAGoodCamera)
{
    EXPECT_EQ(page.reason(2), QString());
}

TEST_F(RowReason, IsThatOfTheNewAddressOnceItIsStored)
{
    page.remarks().set({0, 1}, QStringLiteral("out"));
    typeAddress(page, 1, QStringLiteral("c"));
    EXPECT_EQ(page.reason(1), QStringLiteral("not fetched yet"));
    typeAddress(page, 1, QString());
    EXPECT_EQ(page.reason(1), QString());
}

TEST_F(RowReason, IsNotThatOfTheCameraThatHadTheRowBefore)
{
    table.setUrl({3, 4}, u"d");
    page.load();
    page.remarks().set({0, 1}, QStringLiteral("out"));
    page.remarks().set({0, 2}, QStringLiteral("slow"));
    page.remarks().set({3, 4}, QStringLiteral("out"));
    table.setUrl({0, 1}, u"c");
    table.setUrl({3, 4}, {});
    page.reread();
    EXPECT_EQ(page.reason(1), QStringLiteral("not fetched yet"));
    EXPECT_EQ(page.reason(2), QStringLiteral("slow"));
    EXPECT_EQ(page.remarks().of({3, 4}), QString());
    EXPECT_EQ(told, (QList<int>{1, 4}));
}

// Written into the settings by hand, of which nothing else tells.
TEST_F(RowReason, IsThatOfTheCameraThatATabSwitchFinds)
{
    page.remarks().set({0, 1}, QStringLiteral("out"));
    page.remarks().set({0, 2}, QStringLiteral("slow"));
    store("[Liste0]\r\nlst1=c\r\nlst2=b\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    EXPECT_EQ(page.reason(1), QStringLiteral("not fetched yet"));
    EXPECT_EQ(page.reason(2), QStringLiteral("slow"));
    EXPECT_EQ(told, QList<int>{1});
}

TEST_F(RowReason, AddressesAreAnnouncedOnlyWhenTheyChange)
{
    page.remarks().set({0, 1}, QStringLiteral("out"));
    typeAddress(page, 1, QStringLiteral("a"));
    EXPECT_EQ(page.reason(1), QStringLiteral("out"));
    typeAddress(page, 2, QStringLiteral("c"));
    EXPECT_EQ(told, QList<int>{2});
}

} // namespace
} // namespace velmora
