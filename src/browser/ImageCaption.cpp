#include "browser/ImageCaption.h"

#include "base/DateText.h"

namespace velmora {
namespace {

constexpr qsizetype kStem = 15; // "20060307_140509"

QString part(const QString &name, qsizetype at, qsizetype length)
{
    return name.sliced(at, length);
}

} // namespace

QString imageCaption(const QString &name)
{
    if (name.size() < kStem || name[8] != u'_') {
        return name;
    }
    const QString date = QStringLiteral("%1/%2/%3 %4:%5:%6")
                             .arg(part(name, 6, 2), part(name, 4, 2), part(name, 0, 4))
                             .arg(part(name, 9, 2), part(name, 11, 2), part(name, 13, 2));
    return dateFromText(date) ? date : name;
}

} // namespace velmora
