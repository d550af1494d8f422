// Fuzzes what is shown of an address: nothing from before its last "@", nothing of a password whose
// "@" is not typed yet, no value of a field that is not known to be harmless, and nothing that was
// not there. Input: three lengths (user, password, field), those three texts, then the rest of an
// address.
#include "Require.h"
#include "cameras/Credentials.h"

#include <QByteArrayView>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr qsizetype kMaxPart = 16;
const QString kSecret = QStringLiteral("S3CRET");
const QString kMask = QStringLiteral("***");

QString taken(QByteArrayView &rest, qsizetype length)
{
    const QByteArrayView part = rest.first(std::min(length, rest.size()));
    rest = rest.sliced(part.size());
    return QString::fromUtf8(part);
}

void checkAnyText(const QString &text)
{
    const QString shown = withoutCredentials(text);
    require(!shown.contains(u'@'), "nothing stands before an at sign");
    require(withoutCredentials(shown) == shown, "what is shown is shown the same again");
    QString left = shown;
    left.remove(kMask);
    qsizetype at = 0;
    for (const QChar c : left) {
        at = text.indexOf(c, at) + 1;
        require(at > 0, "only what was there is shown, in its order");
    }
}

// Whatever surrounds it, a password is not shown.
void checkPassword(const QString &user, const QString &password, const QString &rest)
{
    for (const char *const scheme :
         {"http://", "https://", "rtsp:/", "", "(http://", "\"http://"}) {
        const QString begin = QLatin1String(scheme) + user;
        const QString shown =
            withoutCredentials(begin + u':' + kSecret + password + kSecret + u'@' + rest);
        require(!shown.contains(kSecret), "no password is shown");
    }
}

// A login being typed, before its "@" and its host.
void checkTyped(const QString &password)
{
    if (password.contains(u'@')) {
        return;
    }
    const QString shown =
        addressWithoutCredentials(QStringLiteral("me:") + kSecret + password + kSecret);
    require(!shown.contains(kSecret), "no password is shown while it is typed");
}

// A value cannot end where there is no separator.
void checkField(const QString &path, const QString &value)
{
    const auto separates = [](QChar c) { return QStringView(u"?&;@").contains(c); };
    if (std::ranges::any_of(value, separates)) {
        return;
    }
    for (const char *const name : {"pwd=", "u=", "token=", "camera=", ""}) {
        const QString shown = withoutCredentials(QStringLiteral("http://h/") + path + u'?' +
                                                 QLatin1String(name) + value + u'/' + kSecret);
        require(!shown.contains(kSecret), "no field shows more than a harmless value");
    }
}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace velmora::fuzz;
    QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkAnyText(QString::fromUtf8(bytes));
    if (bytes.size() < 3) {
        return 0;
    }
    const auto length = [&bytes](qsizetype part) {
        return static_cast<unsigned char>(bytes[part]) % kMaxPart;
    };
    QByteArrayView rest = bytes.sliced(3);
    const QString user = taken(rest, length(0));
    const QString password = taken(rest, length(1));
    const QString field = taken(rest, length(2));
    checkPassword(user, password, QString::fromUtf8(rest));
    checkTyped(password);
    checkField(user, field);
    return 0;
}
