// The brightness of a JPEG, decoded line by line at a fraction of its size, for a
// rough look at it that blocks nothing.
#pragma once

#include <QByteArrayView>
#include <QSize>

#include <memory>
#include <span>

namespace velmora {

class JpegGrey
{
public:
    /// least: the fraction is chosen so that neither side gets smaller than this, if the picture
    /// itself is not. bytes: outlive the object.
    JpegGrey(QByteArrayView bytes, QSize least);
    Q_DISABLE_COPY_MOVE(JpegGrey)
    ~JpegGrey();

    /// Decodes a little more, in well under a millisecond; false when there is no more.
    [[nodiscard]] bool step();

    /// The reduced picture's size; empty before it is known, and for what cannot be read like this:
    /// anything but a JPEG, and a JPEG of more than 64 Mi pixels, of several scans that would take
    /// more than 40 MiB of memory, or in the colours of print.
    [[nodiscard]] QSize size() const;

    /// Number of the line that came last, from 0; -1 before the first.
    [[nodiscard]] int lineNumber() const;

    /// The grey levels of that line.
    [[nodiscard]] std::span<const unsigned char> line() const;

private:
    struct Decoder;

    void begin();
    void consume();
    void readLine();

    std::unique_ptr<Decoder> decoder_;
};

} // namespace velmora
