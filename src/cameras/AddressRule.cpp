#include "cameras/AddressRule.h"

#include "base/AnsiText.h"
#include "cameras/FolderName.h"
#include "settings/StoredText.h"

namespace velmora {
namespace {

bool isInQuotes(const QString &text)
{
    return text.size() > 1 && text.front() == text.back() &&
           (text.front() == u'"' || text.front() == u'\'');
}

} // namespace

QString bareAddress(const QString &text)
{
    QString bare = text.trimmed();
    while (isInQuotes(bare)) {
        bare = bare.sliced(1, bare.size() - 2).trimmed();
    }
    return bare;
}

std::optional<QString> addressRefusal(QStringView url, int row)
{
    if (url.size() <= kMaxUrlLength) {
        return std::nullopt;
    }
    return QStringLiteral("Overflow: this camera address has %1 characters, at most 255 can be "
                          "stored; row %2 keeps the address that it had")
        .arg(url.size())
        .arg(row);
}

std::optional<QString> addressLoss(QStringView url, int row)
{
    if (url.size() <= kMostReadBack && fitsAnsi(url)) {
        return std::nullopt;
    }
    return QStringLiteral("The settings file cannot hold the address of row %1 as it is: it "
                          "keeps 254 characters of the Western European set")
        .arg(row);
}

} // namespace velmora
