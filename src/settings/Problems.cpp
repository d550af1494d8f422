#include "settings/Problems.h"

namespace velmora {
namespace {

// Months of running must not fill memory with texts.
constexpr qsizetype kMaxRemembered = 1000;

} // namespace

Problems::Problems(EventLog &log)
    : log_(log)
{
    connect(&log_, &EventLog::writeFailed, this, &Problems::showOnce);
}

void Problems::warn(const QString &text)
{
    log_.trace(text);
    showOnce(text);
}

void Problems::tell(const QString &text)
{
    log_.trace(text);
    Q_EMIT warned(text);
}

void Problems::showOnce(const QString &text)
{
    if (shown_.contains(text)) {
        return;
    }
    if (shown_.size() >= kMaxRemembered) {
        shown_.clear();
    }
    shown_.insert(text);
    Q_EMIT warned(text);
}

} // namespace velmora
