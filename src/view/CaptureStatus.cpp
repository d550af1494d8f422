#include "view/CaptureStatus.h"

namespace velmora {

void CaptureStatus::set(Caption caption, const QString &text)
{
    QString &current = texts_.at(index(caption));
    if (current != text) {
        current = text;
        Q_EMIT changed(caption, text);
    }
}

} // namespace velmora
