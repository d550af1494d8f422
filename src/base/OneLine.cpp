#include "base/OneLine.h"

#include <QRegularExpression>

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

QStringList nonEmptyLines(const QString &text)
{
    static const QRegularExpression lineEnds(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]+"));
    return text.split(lineEnds, Qt::SkipEmptyParts);
}

} // namespace velmora
