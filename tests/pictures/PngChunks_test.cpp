// What is stripped from a PNG.
#include "pictures/PngChunks.h"

#include "PictureMaker.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace test;

constexpr qsizetype kFrontBytes = 8 + 25; // signature and header

QByteArray plainPng()
{
    return paintedPngChunks(encoded(quarters({16, 16}), "png"));
}

QByteArray withChunk(QByteArrayView name, const QByteArray &body)
{
    return plainPng().insert(kFrontBytes, pngChunk(name, body));
}

TEST(PngChunks, KeepTheHeaderThePaletteTheDataAndTheEnd)
{
    const QByteArray png = plainPng();
    EXPECT_EQ(paintedPngChunks(png), png);
    EXPECT_TRUE(png.contains("IHDR") && png.contains("IDAT") && png.contains("IEND"));
    EXPECT_EQ(paintedPngChunks(withChunk("PLTE", "abc")), withChunk("PLTE", "abc"));
}

TEST(PngChunks, KeepTheTransparency)
{
    EXPECT_EQ(paintedPngChunks(withChunk("tRNS", "abcdef")), withChunk("tRNS", "abcdef"));
}

TEST(PngChunks, LeaveTextsAndProfilesOut)
{
    for (const QByteArrayView name : {"tEXt", "zTXt", "iTXt", "iCCP", "eXIf", "gAMA", "pHYs"}) {
        EXPECT_EQ(paintedPngChunks(withChunk(name, "abcdef")), plainPng());
    }
}

TEST(PngChunks, LeaveOutAllOfMany)
{
    QByteArray png = plainPng();
    for (int i = 0; i < 1000; ++i) {
        png.insert(kFrontBytes, pngChunk("zTXt", QByteArray(i % 7, 'x')));
    }
    EXPECT_EQ(paintedPngChunks(png), plainPng());
}

TEST(PngChunks, MakeAShorterChunkOfDataThatBreakOff)
{
    const QByteArray front = plainPng().first(kFrontBytes);
    const QByteArray data = pngChunk("IDAT", "abcdefgh");
    for (const qsizetype missing : {1, 4, 5}) {
        const QByteArray there = QByteArray("abcdefgh").first(missing < 5 ? 8 : 7);
        EXPECT_EQ(paintedPngChunks(front + data.chopped(missing)), front + pngChunk("IDAT", there));
    }
}

TEST(PngChunks, KeepAnotherLastChunkThatBreaksOff)
{
    const QByteArray cut = plainPng().first(kFrontBytes) + pngChunk("PLTE", "abcdef").chopped(6);
    EXPECT_EQ(paintedPngChunks(cut), cut);
}

TEST(PngChunks, EndAtALengthBeyondTheFile)
{
    const QByteArray huge = QByteArray::fromHex("FFFFFFFF") + "IDATxyz";
    EXPECT_EQ(paintedPngChunks(plainPng().first(kFrontBytes) + huge),
              plainPng().first(kFrontBytes) + pngChunk("IDAT", "xyz"));
}

TEST(PngChunks, LeaveAPieceOfAChunksHeadOut)
{
    const QByteArray front = plainPng().first(kFrontBytes);
    EXPECT_EQ(paintedPngChunks(front + "1234567"), front);
    EXPECT_EQ(paintedPngChunks(front.first(8)), front.first(8));
}

} // namespace
} // namespace velmora
