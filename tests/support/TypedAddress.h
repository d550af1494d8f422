// An address typed into a row's box, without the box.
#pragma once

#include "view/CameraPage.h"

namespace velmora::test {

/// As when the text is typed into the box of a row on screen, and the box left.
inline void typeAddress(CameraPage &page, int row, const QString &text)
{
    page.changeSource(row, text);
    page.leaveSource(row, text);
}

} // namespace velmora::test
