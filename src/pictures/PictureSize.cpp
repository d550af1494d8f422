#include "pictures/PictureSize.h"

namespace velmora {
namespace {

bool fitsInto(QSize size, QSize frame)
{
    return size.width() <= frame.width() && size.height() <= frame.height();
}

} // namespace

bool isBearable(QSize stored)
{
    return !stored.isEmpty() && qint64{stored.width()} * stored.height() <= kMaxPixels;
}

QSize wantedSize(QSize own, const PictureWish &wish)
{
    if (wish.shown.isEmpty() || fitsInto(own, wish.shown)) {
        return own;
    }
    if (wish.fit == Fit::Stretch) {
        return wish.shown;
    }
    return own.scaled(wish.shown, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

int jpegDivisor(QSize stored, QSize needed)
{
    int divisor = 8;
    while (divisor > 1 && !fitsInto(needed * divisor, stored)) {
        divisor /= 2;
    }
    return divisor;
}

} // namespace velmora
