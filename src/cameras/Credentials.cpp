#include "cameras/Credentials.h"

#include <QRegularExpression>

namespace velmora {

QString withoutCredentials(const QString &url)
{
    static const QRegularExpression userInfo(QStringLiteral("(^|//)[^/?#]*@"));
    static const QRegularExpression secretField(
        QStringLiteral(
            "([?&](?:user|usr|username|login|loginuse|loginpas|account|pw|pwd|pas|pass|passwd|"
            "password|psw|secret|token|auth)=)[^&#]*"),
        QRegularExpression::CaseInsensitiveOption);
    return QString(url)
        .replace(userInfo, QStringLiteral("\\1"))
        .replace(secretField, QStringLiteral("\\1***"));
}

} // namespace velmora
