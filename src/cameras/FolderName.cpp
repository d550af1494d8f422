#include "cameras/FolderName.h"

#include "base/AnsiText.h"
#include "base/NativePaths.h"
#include "settings/Numbers.h"

#include <string_view>

namespace velmora {
namespace {

constexpr qsizetype kMostEncoded = 255;
constexpr int kHexBase = 16;
constexpr qsizetype kMostCodeLength = 3;

bool isAsciiLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Hexadecimal in capitals, without a leading zero: a tab is "%9".
void appendCode(QString &name, unsigned char c)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    name += u'%';
    if (c >= kHexBase) {
        name += QLatin1Char(digits[c / kHexBase]);
    }
    name += QLatin1Char(digits[c % kHexBase]);
}

// The number at the start of the text, read as hexadecimal; 0 when there is none.
int leadingHex(QStringView text)
{
    int code = 0;
    for (const QChar c : text) {
        bool isDigit = false;
        const int digit = QString(c).toInt(&isDigit, kHexBase);
        if (!isDigit) {
            break;
        }
        code = code * kHexBase + digit;
    }
    return code;
}

} // namespace

QString encodeFolderName(QStringView url)
{
    if (url.size() > kMaxUrlLength) {
        throw OverflowError(
            QStringLiteral(
                "Overflow: a camera address may have at most 255 characters, this one has %1")
                .arg(url.size()));
    }
    QString name;
    name.reserve(kMostCodeLength * url.size());
    for (const char c : toAnsi(url)) {
        if (isAsciiLetter(c)) {
            name += QLatin1Char(c);
        } else {
            appendCode(name, static_cast<unsigned char>(c));
        }
    }
    return name.isEmpty() ? QString() : u'\\' + name.left(kMostEncoded) + u'\\';
}

QString cameraFolderTextOf(const QString &storage, QStringView url)
{
    return storage + encodeFolderName(url);
}

QString cameraFolderOf(const NativePaths &paths, const QString &storage, QStringView url)
{
    try {
        return paths.native(cameraFolderTextOf(storage, url)).value_or(QString());
    } catch (const OverflowError &) {
        return {};
    }
}

QString DecodeFolderName(QStringView name)
{
    QString text;
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name[i] != u'%') {
            text += name[i];
            continue;
        }
        const QStringView code = name.sliced(i + 1).left(2);
        text += fromAnsi(QByteArray(1, static_cast<char>(leadingHex(code.trimmed()))));
        i += 2;
    }
    return text;
}

} // namespace velmora
