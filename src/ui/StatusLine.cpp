#include "ui/StatusLine.h"

#include "ui/ToolTips.h"

#include <utility>

namespace velmora {

void StatusLine::show(const Words &words)
{
    shown_ = words;
    line_.setText(words.text);
    setPlainToolTip(line_, words.text);
}

StatusLine::Words StatusLine::standing() const
{
    return halt_.isEmpty() ? Words{Kind::Kept, kept_} : Words{Kind::Halt, halt_};
}

void StatusLine::showMessage(const QString &text)
{
    show(text.isEmpty() ? standing() : Words{Kind::Message, text});
}

void StatusLine::showNotice(const QString &text)
{
    show({Kind::Notice, text});
}

void StatusLine::endNotice()
{
    const Words event{Kind::Event, lastEvent_};
    if (beforeHalt_.kind == Kind::Notice) {
        beforeHalt_ = event;
    }
    if (shown_.kind == Kind::Notice) {
        show(standing().text.isEmpty() ? event : standing());
    }
}

void StatusLine::showSearch(const QString &text)
{
    if (!text.isEmpty()) {
        show({Kind::Search, text});
    } else if (shown_.kind == Kind::Search) {
        show(standing());
    }
}

void StatusLine::showCaptureEvent(const QString &text)
{
    const bool isOther = std::exchange(lastEvent_, text) != text;
    if (shown_.kind == Kind::Notice) {
        return;
    }
    if (standing().text.isEmpty()) {
        show({Kind::Event, text});
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
    if (!kept_.isEmpty() || shown_.kind == Kind::Kept) {
        show({Kind::Kept, kept_});
    }
}

void StatusLine::halt(const QString &text)
{
    const QString before = std::exchange(halt_, text);
    if (halt_ == before) {
        return;
    }
    if (!halt_.isEmpty()) {
        beforeHalt_ = before.isEmpty() ? shown_ : beforeHalt_;
        show({Kind::Halt, halt_});
    } else {
        show(kept_.isEmpty() ? beforeHalt_ : Words{Kind::Kept, kept_});
    }
}

void StatusLine::showHalt()
{
    if (!halt_.isEmpty()) {
        show({Kind::Halt, halt_});
    }
}

} // namespace velmora
