// The file name of a captured image.
#include "capture/ImageName.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QByteArray kJpeg("\xFF\xD8\xFF\xE0rest");
const QByteArray kPng("\x89PNG\r\n\x1A\nrest");
const QByteArray kGif("GIF89arest");
const QByteArray kBmp("BMrest");
const QByteArray kWebp("RIFF\x10\x20\x30\x40WEBPrest");
const QByteArray kUnknown("<html>");

struct ExtensionRow
{
    const char *name;
    QString url;
    QByteArray body;
    QString contentType;
    QString extension;
};

void PrintTo(const ExtensionRow &row, std::ostream *out)
{
    *out << row.url.toStdString();
}

class ImageExtension : public testing::TestWithParam<ExtensionRow>
{
};

TEST_P(ImageExtension, ComesFromTheAddressOrElseFromTheContent)
{
    const ExtensionRow &row = GetParam();
    EXPECT_EQ(imageExtension(row.url, row.body, row.contentType), row.extension);
}

const ExtensionRow kRows[] = {
    {"OfTheAddress", QStringLiteral("http://h/a.jpg"), kPng, QStringLiteral("image/png"),
     QStringLiteral(".jpg")},
    {"CaseKept", QStringLiteral("http://h/a.JPG"), kJpeg, {}, QStringLiteral(".JPG")},
    {"BehindTheLastDot", QStringLiteral("http://h/a.b.c.gif"), kJpeg, {}, QStringLiteral(".gif")},
    {"FourLetters", QStringLiteral("http://h/a.jpeg"), kJpeg, {}, QStringLiteral(".jpeg")},
    {"OfAScript", QStringLiteral("http://h/snap.cgi"), kJpeg, {}, QStringLiteral(".cgi")},
    {"HostNumber", QStringLiteral("http://10.0.0.5"), kPng, {}, QStringLiteral(".5")},
    {"DotAtTheEnd", QStringLiteral("http://h/a."), kJpeg, {}, QStringLiteral(".")},
    {"SlashBehindTheDot",
     QStringLiteral("http://10.0.0.5/snap"),
     kJpeg,
     {},
     QStringLiteral(".jpg")},
    {"QueryBehindTheDot", QStringLiteral("http://h/snap.cgi?x"), kPng, {}, QStringLiteral(".png")},
    {"PortBehindTheDot", QStringLiteral("http://h.de:8080"), kGif, {}, QStringLiteral(".gif")},
    {"StarBehindTheDot", QStringLiteral("http://h/a.j*g"), kBmp, {}, QStringLiteral(".bmp")},
    {"AngleBehindTheDot", QStringLiteral("http://h/a.<b"), kWebp, {}, QStringLiteral(".webp")},
    {"CloseAngleBehindTheDot", QStringLiteral("http://h/a.b>"), kJpeg, {}, QStringLiteral(".jpg")},
    {"BarBehindTheDot", QStringLiteral("http://h/a.b|c"), kJpeg, {}, QStringLiteral(".jpg")},
    {"ApostropheBehindTheDot", QStringLiteral("http://h/a.'b"), kPng, {}, QStringLiteral(".png")},
    {"ControlCharacterBehindTheDot",
     QStringLiteral("http://h/a.j\tg"),
     kPng,
     {},
     QStringLiteral(".png")},
    {"QuoteBehindTheDot", QStringLiteral("http://h/a.\"b\""), kJpeg, {}, QStringLiteral(".jpg")},
    {"BackslashBehindTheDot", QStringLiteral("http://h/a.b\\c"), kJpeg, {}, QStringLiteral(".jpg")},
    {"EndOfASecretField",
     QStringLiteral("http://h/snap.cgi?pwd=x.s3cret"),
     kPng,
     {},
     QStringLiteral(".png")},
    {"EndOfAPasswordWithoutHost",
     QStringLiteral("http://me:x.s@h"),
     kGif,
     {},
     QStringLiteral(".gif")},
    {"PictureInAnUnknownField",
     QStringLiteral("http://h/show?file=a.JPEG"),
     kPng,
     {},
     QStringLiteral(".JPEG")},
    {"EndOfAHarmlessField",
     QStringLiteral("http://h/show?camera=a.cam"),
     kPng,
     {},
     QStringLiteral(".cam")},
    {"NoDot", QStringLiteral("http://cam/snap"), kPng, {}, QStringLiteral(".png")},
    {"ContentBeforeTheServersWord", QStringLiteral("http://cam/snap"), kPng,
     QStringLiteral("image/jpeg"), QStringLiteral(".png")},
    {"ServersWordPng", QStringLiteral("http://cam/snap"), kUnknown, QStringLiteral("image/png"),
     QStringLiteral(".png")},
    {"ServersWordInAnyCase", QStringLiteral("http://cam/snap"), kUnknown,
     QStringLiteral("IMAGE/GIF"), QStringLiteral(".gif")},
    {"ServersWordWithParameter", QStringLiteral("http://cam/snap"), kUnknown,
     QStringLiteral("image/webp; q=1"), QStringLiteral(".webp")},
    {"ServersWordBmp", QStringLiteral("http://cam/snap"), kUnknown, QStringLiteral("image/bmp"),
     QStringLiteral(".bmp")},
    {"UnknownToAll", QStringLiteral("http://cam/snap"), kUnknown, QStringLiteral("text/html"),
     QStringLiteral(".jpg")},
    {"NothingAtAll", QStringLiteral("http://cam/snap"), {}, {}, QStringLiteral(".jpg")},
    {"ShorterThanTheMark",
     QStringLiteral("http://cam/snap"),
     QByteArray("RIFF"),
     {},
     QStringLiteral(".jpg")},
};

INSTANTIATE_TEST_SUITE_P(ImageName, ImageExtension, testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.name); });

constexpr WallTime kImage =
    std::chrono::local_days{std::chrono::year{2006} / 3 / 7} + 14h + 5min + 9s;

TEST(ImageName, HoldsDateDayAndHour)
{
    EXPECT_EQ(imageName(kImage, kImage, QStringLiteral(".jpg")),
              QStringLiteral("20060307_1405090714.jpg"));
}

TEST(ImageName, PadsEveryField)
{
    const WallTime image = std::chrono::local_days{std::chrono::year{987} / 1 / 2} + 3h + 4min + 5s;
    const WallTime download = std::chrono::local_days{std::chrono::year{2006} / 1 / 6} + 7h;
    EXPECT_EQ(imageName(image, download, QStringLiteral(".gif")),
              QStringLiteral("09870102_0304050607.gif"));
}

TEST(ImageName, CutsALongExtensionToThreeLetters)
{
    EXPECT_EQ(imageName(kImage, kImage, QStringLiteral(".jpeg")),
              QStringLiteral("20060307_1405090714.jpe"));
    EXPECT_EQ(imageName(kImage, kImage, QStringLiteral(".webp")),
              QStringLiteral("20060307_1405090714.web"));
}

TEST(ImageName, KeepsAShortExtension)
{
    EXPECT_EQ(imageName(kImage, kImage, QStringLiteral(".5")),
              QStringLiteral("20060307_1405090714.5"));
}

TEST(ImageName, WritesTheZeroDate)
{
    const WallTime download = std::chrono::local_days{std::chrono::year{2006} / 12 / 31} + 23h;
    EXPECT_EQ(imageName(kZeroDate, download, QStringLiteral(".jpg")),
              QStringLiteral("18991230_0000003123.jpg"));
}

} // namespace
} // namespace velmora::test
