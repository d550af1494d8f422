#include "ui/StatusLine.h"

#include "ui/ToolTips.h"

#include <utility>

namespace velmora {

void StatusLine::show(const QString &text)
{
    line_.setText(text);
    setPlainToolTip(line_, text);
}

void StatusLine::tell(const QString &text)
{
    show(text.isEmpty() ? kept_ : text);
}

void StatusLine::tellEvent(const QString &text)
{
    const bool isOther = std::exchange(lastEvent_, text) != text;
    if (kept_.isEmpty()) {
        show(text);
    } else if (isOther) {
        show(kept_);
    }
}

void StatusLine::keep(const QString &text)
{
    const QString before = std::exchange(kept_, text);
    if (kept_ == before) {
        return;
    }
    if (!kept_.isEmpty() || line_.text() == before) {
        show(kept_);
    }
}

} // namespace velmora
