#include "ui/StatusLine.h"

#include "ui/ToolTips.h"

#include <utility>

namespace velmora {

void StatusLine::show(const QString &text)
{
    line_.setText(text);
    setPlainToolTip(line_, text);
}

const QString &StatusLine::standing() const
{
    return halt_.isEmpty() ? kept_ : halt_;
}

void StatusLine::tell(const QString &text)
{
    show(text.isEmpty() ? standing() : text);
}

void StatusLine::tellEvent(const QString &text)
{
    const bool isOther = std::exchange(lastEvent_, text) != text;
    if (standing().isEmpty()) {
        show(text);
    } else if (isOther) {
        show(standing());
    }
}

void StatusLine::keep(const QString &text)
{
    const QString before = std::exchange(kept_, text);
    if (kept_ == before || !halt_.isEmpty()) {
        return;
    }
    if (!kept_.isEmpty() || line_.text() == before) {
        show(kept_);
    }
}

void StatusLine::halt(const QString &text)
{
    const QString before = std::exchange(halt_, text);
    if (halt_ == before) {
        return;
    }
    if (!halt_.isEmpty()) {
        beforeHalt_ = before.isEmpty() ? line_.text() : beforeHalt_;
        show(halt_);
    } else if (line_.text() == before) {
        show(kept_.isEmpty() ? beforeHalt_ : kept_);
    }
}

} // namespace velmora
