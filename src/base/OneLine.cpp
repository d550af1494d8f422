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
    return std::any_of(text.begin(), text.end(), isControl);
}

QString onOneLine(QString text)
{
    std::replace_if(text.begin(), text.end(), isControl, QChar(u' '));
    return text;
}

} // namespace velmora
