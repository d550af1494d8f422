#include "settings/StoredText.h"

#include "base/AnsiText.h"
#include "base/OneLine.h"

namespace velmora {

bool isStorable(QStringView text)
{
    return text.size() <= kMostReadBack && !holdsControls(text) && fitsAnsi(text);
}

} // namespace velmora
