#include "ui/PlainTextBox.h"

#include <QMimeData>

namespace velmora {

void PlainTextBox::insertFromMimeData(const QMimeData *source)
{
    if (source->hasText()) {
        insertPlainText(source->text());
        ensureCursorVisible();
    }
}

} // namespace velmora
