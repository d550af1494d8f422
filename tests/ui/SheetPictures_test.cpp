// The pictures on the contact sheet: what is decoded when, what is shown meanwhile, and what
// unusable files do.
#include "BrowserWindowHouse.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace velmora::test {
namespace {

constexpr QSize kLargeSize{1600, 1200};

/// Checks the cells whenever one of them is painted, and records those that were empty.
class PaintWatch final : public QObject
{
public:
    explicit PaintWatch(BrowserWindowHouse &house)
    {
        for (int i = 0; i < kCells; ++i) {
            house.cell(i).installEventFilter(this);
        }
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            const auto *const cell = qobject_cast<PictureView *>(watched);
            if (!cell->holdsPicture()) {
                empty.append(cell->objectName());
            }
        }
        return QObject::eventFilter(watched, event);
    }

    int paints = 0;
    QStringList empty;
};

class SheetPicturesTest : public testing::Test
{
protected:
    SheetPicturesTest()
    {
        QObject::connect(&house_.loader, &PictureLoader::loaded, &house_.window,
                         [this](const PictureOrder &order, const QImage &image) {
                             orders_.append(order);
                             images_.append(image);
                         });
    }

    void put(int second, const QByteArray &bytes)
    {
        house_.house.addCamera({0, 0}, cameraUrl({0, 0}));
        house_.house.putImage({0, 0}, storedName(second), bytes);
    }

    QColor colourAt(int cell, double x, double y)
    {
        const QImage look = house_.cell(cell).grab().toImage();
        return look.pixelColor(static_cast<int>(look.width() * x),
                               static_cast<int>(look.height() * y));
    }

    // Approximately, since JPEG keeps no colour exactly.
    static bool isLike(const QColor &one, const QColor &other)
    {
        return std::abs(one.red() - other.red()) < 40 &&
               std::abs(one.green() - other.green()) < 40 &&
               std::abs(one.blue() - other.blue()) < 40;
    }

    BrowserWindowHouse house_;
    QList<PictureOrder> orders_;
    QList<QImage> images_;
};

TEST_F(SheetPicturesTest, EachCellNamesItsFile)
{
    house_.openOn(12);
    for (int i = 0; i < kCells; ++i) {
        EXPECT_EQ(house_.cell(i).accessibleDescription(),
                  house_.imagePath({0, 0}, storedName(i + 2)));
    }
}

TEST_F(SheetPicturesTest, AStepAlongTheListDecodesOnePicture)
{
    house_.openOn(100);
    house_.clickRow(QStringLiteral("LstDir"), 20);
    for (int step = 0; step < 8; ++step) {
        const int before = house_.cache.decodes();
        house_.key(QStringLiteral("LstDir"), Qt::Key_Down);
        EXPECT_EQ(house_.cache.decodes(), before + 1) << step;
        EXPECT_EQ(house_.shown(4), storedName(21 + step));
    }
}

TEST_F(SheetPicturesTest, AStepBackDecodesNone)
{
    house_.openOn(40);
    house_.clickRow(QStringLiteral("LstDir"), 20);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Down);
    const int before = house_.cache.decodes();
    house_.key(QStringLiteral("LstDir"), Qt::Key_Up);
    EXPECT_EQ(house_.cache.decodes(), before);
    EXPECT_EQ(house_.shown(4), storedName(20));
}

TEST_F(SheetPicturesTest, ReadingAnUnchangedFolderAgainDecodesNone)
{
    house_.openOn(12);
    const int before = house_.cache.decodes();
    house_.keyInWindow(Qt::Key_F5);
    EXPECT_EQ(house_.cache.decodes(), before);
}

TEST_F(SheetPicturesTest, PicturesStayUntilTheNextOnesAreThere)
{
    house_.openOn(40);
    PaintWatch watch(house_);
    for (int step = 0; step < 25; ++step) {
        house_.key(QStringLiteral("LstDir"), Qt::Key_Up);
    }
    EXPECT_GT(watch.paints, 25);
    EXPECT_EQ(watch.empty, QStringList());
}

TEST_F(SheetPicturesTest, PicturesStayWhenAnotherCameraIsChosen)
{
    house_.addImages({0, 1}, 15);
    house_.openOn(15);
    PaintWatch watch(house_);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    house_.keyInWindow(Qt::Key_F5);
    EXPECT_GT(watch.paints, 0);
    EXPECT_EQ(watch.empty, QStringList());
}

TEST_F(SheetPicturesTest, TheSelectedImageComesFirst)
{
    house_.openOn(30);
    orders_.clear();
    house_.clickRow(QStringLiteral("LstDir"), 12);
    ASSERT_FALSE(orders_.isEmpty());
    EXPECT_EQ(orders_.first().place, 4);
    EXPECT_EQ(orders_.first().path, house_.imagePath({0, 0}, storedName(12)));
}

TEST_F(SheetPicturesTest, PicturesAreDecodedForThePixelsOfTheScreen)
{
    put(0, pictureBytes(Qt::red, kLargeSize));
    house_.open();
    ASSERT_FALSE(images_.isEmpty());
    const double ratio = house_.window.devicePixelRatioF();
    EXPECT_EQ(images_.last().size(), (QSizeF(house_.cell(0).size()) * ratio).toSize());
}

TEST_F(SheetPicturesTest, AnotherSizeDecodesAgain)
{
    put(0, pictureBytes(Qt::red, kLargeSize));
    house_.open();
    const QSize before = images_.last().size();
    house_.window.resize(house_.window.size() + QSize(240, 240));
    house_.settle();
    EXPECT_EQ(images_.last().size(), house_.cell(0).pixels());
    EXPECT_GT(images_.last().width(), before.width());
}

TEST_F(SheetPicturesTest, TheEnlargedImageKeepsItsShape)
{
    put(0, pictureBytes(Qt::red, {1600, 400}));
    house_.open();
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    auto &zoom = house_.find<PictureView>(QStringLiteral("ZoomImage"));
    const QImage look = zoom.grab().toImage();
    EXPECT_TRUE(isLike(look.pixelColor(look.width() / 2, look.height() / 2), Qt::red));
    EXPECT_FALSE(isLike(look.pixelColor(look.width() / 2, look.height() / 8), Qt::red));
}

TEST_F(SheetPicturesTest, AFileThatIsNoPictureLeavesItsCellEmpty)
{
    put(0, "this is no picture");
    put(1, "");
    put(2, pictureBytes(Qt::red));
    house_.open();
    for (const int cell : {0, 1}) {
        EXPECT_FALSE(house_.cell(cell).holdsPicture()) << cell;
        EXPECT_EQ(house_.cell(cell).accessibleDescription(), QString()) << cell;
    }
    EXPECT_EQ(house_.shown(2), storedName(2));
}

TEST_F(SheetPicturesTest, AClickOnSuchACellStillSelectsIt)
{
    put(0, "this is no picture");
    put(1, pictureBytes(Qt::red));
    house_.open();
    house_.click(QStringLiteral("Vue0"));
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("1 / 2"));
    EXPECT_EQ(house_.framed(), QList<int>{0});
}

TEST_F(SheetPicturesTest, OfAPictureThatBreaksOffWhatThereIsIsShown)
{
    const QByteArray whole = pictureBytes(Qt::red, kLargeSize);
    put(0, whole.first(whole.size() / 2));
    house_.open();
    EXPECT_EQ(house_.shown(0), storedName(0));
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.1), Qt::red));
}

TEST_F(SheetPicturesTest, APictureInFourInksIsShown)
{
    put(0, cmykJpeg());
    house_.open();
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.5), Qt::red))
        << colourAt(0, 0.5, 0.5).name().toStdString();
}

TEST_F(SheetPicturesTest, APictureThatLiesOnItsSideStandsUpright)
{
    put(0, rotatedJpeg());
    house_.open();
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.1), Qt::red));
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.7), Qt::blue));
}

TEST_F(SheetPicturesTest, PicturesFillTheirCellsWhateverTheirShape)
{
    put(0, pictureBytes(Qt::red, {40, 400}));
    house_.open();
    for (const double edge : {0.05, 0.95}) {
        EXPECT_TRUE(isLike(colourAt(0, edge, 0.5), Qt::red)) << edge;
    }
}

TEST_F(SheetPicturesTest, AFileThatWasReplacedIsShownAgain)
{
    put(0, pictureBytes(Qt::red));
    house_.open();
    ASSERT_TRUE(isLike(colourAt(0, 0.5, 0.5), Qt::red));
    put(0, pictureBytes(Qt::blue, {64, 48}));
    house_.keyInWindow(Qt::Key_F5);
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.5), Qt::blue));
}

TEST_F(SheetPicturesTest, AFileThatVanishedEmptiesItsCell)
{
    house_.openOn(3);
    QFile::remove(house_.imagePath({0, 0}, storedName(2)));
    house_.keyInWindow(Qt::Key_F5);
    EXPECT_EQ(house_.shown(2), QString());
    EXPECT_EQ(house_.shown(1), storedName(1));
}

TEST_F(SheetPicturesTest, NoPictureStandsForAnotherFileWhileTheStorageFolderIsAway)
{
    house_.openOn(25);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return); // enlarges the newest
    ASSERT_TRUE(QDir(house_.house.tree.path(u"drives/c"))
                    .rename(QStringLiteral("in"), QStringLiteral("away")));
    house_.house.storage.testSA();
    house_.settle();
    EXPECT_EQ(house_.shown(9), storedName(24)); // what is on show stays
    house_.key(QStringLiteral("LstDir"), Qt::Key_Home);
    for (int i = 0; i < kCells; ++i) {
        EXPECT_EQ(house_.data.sheet.image(i).name, storedName(i));
        EXPECT_EQ(house_.shown(i), QString()) << i;
        EXPECT_FALSE(house_.cell(i).holdsPicture()) << i;
    }
    EXPECT_EQ(house_.shown(QStringLiteral("ZoomImage")), QString());
}

TEST_F(SheetPicturesTest, NothingIsLoadedForAHiddenEnlargedImage)
{
    house_.openOn(3);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    orders_.clear();
    house_.key(QStringLiteral("LstDir"), Qt::Key_Up);
    for (const PictureOrder &order : orders_) {
        EXPECT_LT(order.place, kCells);
    }
    EXPECT_FALSE(orders_.isEmpty());
}

TEST_F(SheetPicturesTest, EmptyCellsTakeThePaletteAndPicturesDoNot)
{
    put(0, pictureBytes(Qt::red));
    house_.open();
    const QPalette light = house_.window.palette();
    QPalette dark = light;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    house_.window.setPalette(dark);
    house_.settle();
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.4), Qt::red));
    EXPECT_LT(colourAt(5, 0.5, 0.2).lightness(), 100);
    house_.window.setPalette(light);
    house_.settle();
    EXPECT_TRUE(isLike(colourAt(0, 0.5, 0.4), Qt::red));
    EXPECT_GT(colourAt(5, 0.5, 0.2).lightness(), 150);
}

// A desktop whose colours are dark does not name one for such texts: black is left for them.
TEST(EmptyPicture, SaysSoOnEveryGround)
{
    for (const QColor &ground : {QColor(49, 54, 59), QColor(239, 240, 241)}) {
        PictureView view;
        QPalette palette;
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::WindowText, ground.lightness() < 128 ? Qt::white : Qt::black);
        palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
        view.setPalette(palette);
        view.setEmptyText(QStringLiteral("▉▉▉▉▉▉"));
        view.resize(200, 100);
        const QImage image = view.grab().toImage();
        const int back = image.pixelColor(100, 20).lightness();
        int farthest = 0;
        for (int x = 60; x < 140; ++x) {
            const int lightness = image.pixelColor(x, 50).lightness();
            farthest = std::max(farthest, std::abs(lightness - back));
        }
        EXPECT_GT(farthest, 80) << ground.name().toStdString();
    }
}

} // namespace
} // namespace velmora::test
