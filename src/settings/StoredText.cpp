#include "settings/StoredText.h"

#include "base/AnsiText.h"
#include "base/OneLine.h"

namespace velmora {
namespace {

constexpr qsizetype kMostReadBack = 254; // characters

} // namespace

bool isStorable(QStringView text)
{
    return text.size() <= kMostReadBack && !holdsControls(text) && fitsAnsi(text);
}

} // namespace velmora
