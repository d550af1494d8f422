// A picture's format by its first bytes.
#include "base/PictureFormat.h"

#include "PictureMaker.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct FormatRow
{
    const char *name;
    QByteArray bytes;
    QByteArray format;
};

class PictureFormat : public testing::TestWithParam<FormatRow>
{
};

TEST_P(PictureFormat, IsKnownByTheFirstBytes)
{
    EXPECT_EQ(pictureFormat(GetParam().bytes), GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, PictureFormat,
    testing::Values(FormatRow{"Jpeg", "\xFF\xD8\xFF", "jpeg"},
                    FormatRow{"Png", "\x89PNG\r\n\x1A\n", "png"},
                    FormatRow{"Gif87", "GIF87a", "gif"}, FormatRow{"Gif89", "GIF89a", "gif"},
                    FormatRow{"Bmp", "BM", "bmp"}, FormatRow{"Webp", "RIFF....WEBP", "webp"},
                    FormatRow{"Nothing", "", ""}, FormatRow{"HalfAJpeg", "\xFF\xD8", ""},
                    FormatRow{"PngSpoiltByATextTransfer", "\x89PNG\n\x1A\n", ""},
                    FormatRow{"LaterGif", "GIF90a", ""}, FormatRow{"Sound", "RIFF....WAVE", ""},
                    FormatRow{"HalfAWebp", "RIFF....WEB", ""}, FormatRow{"Tiff", "II*", ""},
                    FormatRow{"Text", "<html>", ""}, FormatRow{"Svg", "<svg/>", ""}),
    [](const auto &row) { return row.param.name; });

} // namespace
} // namespace velmora
