#include "pictures/JpegReader.h"

#include "base/JpegErrors.h"

namespace velmora {
namespace {

// The bytes of a pixel in the order in which RGB32 has them in memory, the unused one filled.
constexpr J_COLOR_SPACE kPainted = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRA : JCS_EXT_ARGB;

class Decoder
{
public:
    Decoder(QByteArrayView bytes, QSize stored, int divisor, JpegCare care)
        : bytes_(bytes)
        , stored_(stored)
        , divisor_(divisor)
        , care_(care)
    {
        info_.err = errors_.manager();
    }

    Q_DISABLE_COPY_MOVE(Decoder)

    ~Decoder() { jpeg_destroy_decompress(&info_); }

    QImage read()
    {
        const QSize reduced(stored_.width() / divisor_, stored_.height() / divisor_);
        if (reduced.isEmpty() || !tryTo(&Decoder::begin) || !isAsStored()) {
            return {};
        }
        QImage image(static_cast<int>(info_.output_width), static_cast<int>(info_.output_height),
                     QImage::Format_RGB32);
        lines_ = image.bits();
        bytesPerLine_ = image.bytesPerLine();
        if (image.isNull() || !tryTo(&Decoder::readLines)) {
            return {};
        }
        return image.size() == reduced ? image : image.copy({{0, 0}, reduced});
    }

private:
    bool tryTo(void (Decoder::*part)())
    {
        if (setjmp(errors_.way()) != 0) { // NOLINT(cert-err52-cpp): as libjpeg has it
            return false;
        }
        (this->*part)();
        return true;
    }

    // A second frame, of another size, may follow the first.
    [[nodiscard]] bool isAsStored() const
    {
        return info_.image_width == static_cast<unsigned>(stored_.width()) &&
               info_.image_height == static_cast<unsigned>(stored_.height());
    }

    void begin()
    {
        jpeg_create_decompress(&info_);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are bytes
        jpeg_mem_src(&info_, reinterpret_cast<const unsigned char *>(bytes_.data()),
                     static_cast<unsigned long>(bytes_.size()));
        jpeg_read_header(&info_, TRUE);
        if (!isAsStored()) {
            return;
        }
        info_.scale_num = 1;
        info_.scale_denom = static_cast<unsigned>(divisor_);
        info_.out_color_space = kPainted;
        if (care_ == JpegCare::Rough) {
            info_.dct_method = JDCT_IFAST;
            info_.do_fancy_upsampling = FALSE;
        }
        jpeg_start_decompress(&info_);
    }

    void readLines()
    {
        while (info_.output_scanline < info_.output_height) {
            JSAMPROW line = lines_ + info_.output_scanline * bytesPerLine_;
            jpeg_read_scanlines(&info_, &line, 1);
        }
        jpeg_finish_decompress(&info_);
    }

    QByteArrayView bytes_;
    QSize stored_;
    int divisor_;
    JpegCare care_;
    JpegErrors errors_;
    jpeg_decompress_struct info_ = {};
    uchar *lines_ = nullptr;
    qsizetype bytesPerLine_ = 0;
};

} // namespace

QImage readJpeg(QByteArrayView bytes, QSize stored, int divisor, JpegCare care)
{
    return Decoder(bytes, stored, divisor, care).read();
}

} // namespace velmora
