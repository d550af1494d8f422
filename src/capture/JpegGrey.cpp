// libjpeg leaves by a jump when it cannot go on: every function that calls it is called from
// step(), where the jump ends, and holds nothing that would need its destructor.
#include "capture/JpegGrey.h"

#include "base/JpegErrors.h"

#include <array>
#include <vector>

namespace velmora {
namespace {

constexpr qint64 kMostPixels = qint64{64} * 1024 * 1024;
constexpr qint64 kMostCoefficientBytes = qint64{40} * 1024 * 1024;
constexpr int kMostScans = 64; // a hostile picture has thousands, each through all of it
constexpr std::array kFractions{8U, 4U, 2U};

enum class Stage { Header, Scans, Lines, Over };

unsigned fractionFor(const jpeg_decompress_struct &info, QSize least)
{
    for (const unsigned fraction : kFractions) {
        if (info.image_width / fraction >= static_cast<unsigned>(least.width()) &&
            info.image_height / fraction >= static_cast<unsigned>(least.height())) {
            return fraction;
        }
    }
    return 1;
}

// What libjpeg keeps of a picture that comes in several scans: all of it, undecoded.
qint64 coefficientBytes(const jpeg_decompress_struct &info)
{
    qint64 blocks = 0;
    for (const jpeg_component_info &part :
         std::span(info.comp_info, static_cast<std::size_t>(info.num_components))) {
        blocks += qint64{part.width_in_blocks} * part.height_in_blocks;
    }
    return blocks * static_cast<qint64>(sizeof(JBLOCK));
}

bool isReadable(jpeg_decompress_struct &info)
{
    const bool isForPrint = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    const bool fits =
        !jpeg_has_multiple_scans(&info) || coefficientBytes(info) <= kMostCoefficientBytes;
    return !isForPrint && fits && qint64{info.image_width} * info.image_height <= kMostPixels;
}

} // namespace

struct JpegGrey::Decoder
{
    QByteArrayView bytes;
    QSize least;
    Stage stage = Stage::Header;
    JpegErrors errors;
    jpeg_decompress_struct info = {};
    std::vector<unsigned char> line;
    int lineNumber = -1;
};

JpegGrey::JpegGrey(QByteArrayView bytes, QSize least)
    : decoder_(std::make_unique<Decoder>())
{
    Decoder &decoder = *decoder_;
    decoder.bytes = bytes;
    decoder.least = least;
    decoder.info.err = decoder.errors.manager();
}

JpegGrey::~JpegGrey()
{
    jpeg_destroy_decompress(&decoder_->info);
}

bool JpegGrey::step()
{
    Decoder &decoder = *decoder_;
    if (setjmp(decoder.errors.way()) != 0) { // NOLINT(cert-err52-cpp): as libjpeg has it
        decoder.stage = Stage::Over;
        return false;
    }
    switch (decoder.stage) {
    case Stage::Header:
        begin();
        break;
    case Stage::Scans:
        consume();
        break;
    case Stage::Lines:
        readLine();
        break;
    case Stage::Over:
        break;
    }
    return decoder.stage != Stage::Over;
}

// The scans of a picture that has several are read one after another, each in steps of its own.
void JpegGrey::begin()
{
    jpeg_decompress_struct &info = decoder_->info;
    jpeg_create_decompress(&info);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are bytes
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char *>(decoder_->bytes.data()),
                 static_cast<unsigned long>(decoder_->bytes.size()));
    jpeg_read_header(&info, TRUE);
    if (!isReadable(info)) {
        decoder_->stage = Stage::Over;
        return;
    }
    info.scale_num = 1;
    info.scale_denom = fractionFor(info, decoder_->least);
    info.out_color_space = JCS_GRAYSCALE;
    info.dct_method = JDCT_IFAST;
    info.do_fancy_upsampling = FALSE;
    info.buffered_image = jpeg_has_multiple_scans(&info);
    jpeg_start_decompress(&info);
    decoder_->line.resize(info.output_width);
    decoder_->stage = info.buffered_image ? Stage::Scans : Stage::Lines;
}

void JpegGrey::consume()
{
    jpeg_decompress_struct &info = decoder_->info;
    const bool isEnd = jpeg_consume_input(&info) == JPEG_REACHED_EOI;
    if (isEnd || info.input_scan_number > kMostScans) {
        jpeg_start_output(&info, info.input_scan_number);
        decoder_->stage = Stage::Lines;
    }
}

void JpegGrey::readLine()
{
    jpeg_decompress_struct &info = decoder_->info;
    if (info.output_scanline >= info.output_height) {
        decoder_->stage = Stage::Over;
        return;
    }
    JSAMPROW row = decoder_->line.data();
    decoder_->lineNumber = static_cast<int>(info.output_scanline);
    jpeg_read_scanlines(&info, &row, 1);
}

QSize JpegGrey::size() const
{
    const jpeg_decompress_struct &info = decoder_->info;
    return decoder_->line.empty()
               ? QSize()
               : QSize(static_cast<int>(info.output_width), static_cast<int>(info.output_height));
}

int JpegGrey::lineNumber() const
{
    return decoder_->lineNumber;
}

std::span<const unsigned char> JpegGrey::line() const
{
    return decoder_->line;
}

} // namespace velmora
