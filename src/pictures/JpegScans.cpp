#include "pictures/JpegScans.h"

#include "pictures/ByteAt.h"

#include <QtEndian>

#include <string_view>

namespace velmora {
namespace {

constexpr uchar kPlainFrame = 0xC0;
constexpr uchar kFineFrame = 0xC1; // plain, with 12 bits or more tables
constexpr uchar kScan = 0xDA;
constexpr qsizetype kMarkerBytes = 2;
constexpr qsizetype kComponentsInFrame = 9; // after marker, length, bits, height and width
constexpr qsizetype kComponentsInScan = 4;

// Segments whose length the decoder reads as we do: tables, comments and frames that are not
// progressive.
bool isUsual(uchar kind)
{
    constexpr uchar kHuffmanTable = 0xC4;
    constexpr uchar kQuantTable = 0xDB;
    constexpr uchar kRestartInterval = 0xDD;
    constexpr uchar kComment = 0xFE;
    return kind == kPlainFrame || kind == kFineFrame || kind == kHuffmanTable ||
           kind == kQuantTable || kind == kRestartInterval || kind == kComment ||
           (kind >= 0xE0 && kind <= 0xEF);
}

// All components are in the first scan of a frame that is not progressive: the decoder stops after
// it. Walks over the segments before the data; anything unusual there counts as several scans.
bool isOneScan(QByteArrayView bytes)
{
    int components = 0;
    qsizetype at = kMarkerBytes;
    while (at + kComponentsInFrame < bytes.size() && byteAt(bytes, at) == 0xFF) {
        const uchar kind = byteAt(bytes, at + 1);
        if (kind == kScan) {
            return components > 0 && byteAt(bytes, at + kComponentsInScan) == components;
        }
        if (!isUsual(kind)) {
            return false;
        }
        if (kind == kPlainFrame || kind == kFineFrame) {
            components = byteAt(bytes, at + kComponentsInFrame);
        }
        at += kMarkerBytes + qFromBigEndian<quint16>(bytes.data() + at + kMarkerBytes);
    }
    return false;
}

} // namespace

// In a scan's data a byte FF is never followed by DA, so every scan's marker is counted.
// (QByteArrayView searches byte by byte; the standard library's search leaps from FF to FF.)
qint64 countJpegScans(QByteArrayView bytes)
{
    if (isOneScan(bytes)) {
        return 1;
    }
    constexpr std::string_view kStartOfScan = "\xFF\xDA";
    const std::string_view text(bytes.data(), static_cast<std::size_t>(bytes.size()));
    qint64 scans = 0;
    for (std::size_t at = text.find(kStartOfScan); at != std::string_view::npos;
         at = text.find(kStartOfScan, at + kStartOfScan.size())) {
        ++scans;
    }
    return scans;
}

} // namespace velmora
