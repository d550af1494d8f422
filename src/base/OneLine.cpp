#include "base/OneLine.h"

#include <algorithm>

namespace velmora {
namespace {

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

} // namespace

bool holdsControls(QStringView text)
{
    return std::ranges::any_of(text, isControl);
}

QString onOneLine(QString text)
{
    std::ranges::replace_if(text, isControl, QChar(u' '));
    return text;
}

} // namespace velmora
