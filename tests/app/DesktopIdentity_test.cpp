// What the desktop learns about the program.
#include "app/DesktopIdentity.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QSet>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(DesktopIdentity, NamesTheDesktopEntryWithoutItsEnding)
{
    introduceToDesktop();
    EXPECT_EQ(QGuiApplication::desktopFileName(), QStringLiteral("velmora"));
}

TEST(DesktopIdentity, GivesTheWindowsAnIconOfEachUsualSize)
{
    introduceToDesktop();
    const QIcon icon = QGuiApplication::windowIcon();
    for (const int pixels : {16, 24, 32, 48, 128}) {
        const QImage image = icon.pixmap(pixels).toImage();
        EXPECT_TRUE(icon.availableSizes().contains(QSize(pixels, pixels))) << pixels;
        EXPECT_EQ(image.size(), QSize(pixels, pixels));
    }
}

TEST(DesktopIdentity, DrawsSmallIconsInSeveralColoursOnNothing)
{
    introduceToDesktop();
    const QImage image = QGuiApplication::windowIcon().pixmap(16).toImage();
    QSet<QRgb> colours;
    for (int at = 0; at < 16 * 16; ++at) {
        colours.insert(image.pixel(at % 16, at / 16));
    }
    EXPECT_GT(colours.size(), 8);
    EXPECT_EQ(qAlpha(image.pixel(15, 0)), 0);
    EXPECT_EQ(qAlpha(image.pixel(4, 4)), 255);
}

} // namespace
} // namespace velmora::test
