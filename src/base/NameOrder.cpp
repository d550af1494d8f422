#include "base/NameOrder.h"

#include <algorithm>

namespace velmora {
namespace {

unsigned char folded(char c)
{
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

} // namespace

std::strong_ordering compareNames(QByteArrayView a, QByteArrayView b)
{
    std::strong_ordering tie = std::strong_ordering::equal;
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (a[i] == b[i]) {
            continue;
        }
        const auto order = folded(a[i]) <=> folded(b[i]);
        if (order != 0) {
            return order;
        }
        tie = tie == 0 ? a[i] <=> b[i] : tie; // letters: both below 128
    }
    return a.size() == b.size() ? tie : a.size() <=> b.size();
}

bool nameBeginsWith(QByteArrayView name, QByteArrayView text)
{
    return name.size() >= text.size() &&
           std::equal(text.begin(), text.end(), name.begin(),
                      [](char a, char b) { return folded(a) == folded(b); });
}

} // namespace velmora
