// The signal lamp: its colour as a property, and in words.
#include "ui/Lamp.h"

#include <QImage>

#include <gtest/gtest.h>

namespace velmora {
namespace {

QColor middle(Lamp &lamp)
{
    lamp.resize(40, 40);
    return lamp.grab().toImage().pixelColor(20, 20);
}

TEST(Lamp, HoldsItsColourAsABgrProperty)
{
    Lamp lamp;
    EXPECT_TRUE(lamp.setProperty("FillColor", 33023));
    EXPECT_EQ(lamp.property("FillColor").toInt(), 33023);
}

TEST(Lamp, PaintsBgrColours)
{
    Lamp lamp;
    lamp.setFillColor(255);
    EXPECT_GT(middle(lamp).red(), 200);
    EXPECT_LT(middle(lamp).blue(), 130);
    lamp.setFillColor(0x00FF0000);
    EXPECT_GT(middle(lamp).blue(), 200);
    EXPECT_LT(middle(lamp).red(), 130);
}

TEST(Lamp, SaysItsStateInWords)
{
    Lamp lamp;
    EXPECT_EQ(lamp.accessibleDescription(), QStringLiteral("off"));

    const struct
    {
        LampColour colour;
        const char *begin;
    } rows[] = {{LampColour::Red, "red"},
                {LampColour::Orange, "orange"},
                {LampColour::Yellow, "yellow"},
                {LampColour::Green, "green"}};

    for (const auto &row : rows) {
        lamp.setColour(row.colour);
        EXPECT_TRUE(lamp.accessibleDescription().startsWith(QLatin1String(row.begin)));
    }
}

TEST(Lamp, TakesAnyStoredNumber)
{
    Lamp lamp;
    lamp.setFillColor(-1);
    EXPECT_EQ(lamp.FillColor(), -1);
    EXPECT_FALSE(lamp.grab().isNull());
}

} // namespace
} // namespace velmora
