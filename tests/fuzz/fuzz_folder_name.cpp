// Fuzzes the folder names of cameras: any text decodes, any address encodes to a name that a file
// system takes, and a short address of visible characters comes back.
#include "Require.h"
#include "base/AnsiText.h"
#include "cameras/FolderName.h"
#include "settings/Numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr qsizetype kMaxName = 255;
constexpr qsizetype kMaxUncut = 85; // at three characters each, so many fit the name

bool isNameCharacter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') ||
           c == u'%';
}

bool isVisibleLatin(QChar c)
{
    return (c >= u' ' && c <= u'~') || (c >= QChar(0x00A0) && c <= QChar(0x00FF));
}

void checkName(const QString &name)
{
    require(name.size() <= kMaxName + 2, "a name is at most 255 characters long");
    require(name.startsWith(u'\\') && name.endsWith(u'\\'), "a name stands between separators");
    const QStringView inner = QStringView(name).sliced(1, name.size() - 2);
    require(std::all_of(inner.begin(), inner.end(), isNameCharacter),
            "a name holds letters and codes");
}

void checkEncoding(const QString &url)
{
    if (url.size() > kMaxName) {
        try {
            static_cast<void>(encodeFolderName(url));
            require(false, "an address that is too long is refused");
        } catch (const OverflowError &) {
            return;
        }
    }
    const QString name = encodeFolderName(url);
    require(name.isEmpty() == url.isEmpty(), "an empty address alone has no name");
    if (name.isEmpty()) {
        return;
    }
    checkName(name);
    if (url.size() <= kMaxUncut && std::all_of(url.begin(), url.end(), isVisibleLatin)) {
        require(DecodeFolderName(name) == u'\\' + url + u'\\', "a visible address comes back");
    }
}

void check(QByteArrayView bytes)
{
    const QString text = fromAnsi(bytes);
    require(DecodeFolderName(text).size() <= text.size(), "decoding makes nothing longer");
    checkEncoding(text);
    checkEncoding(QString::fromUtf8(bytes));
}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    velmora::fuzz::check(
        QByteArrayView(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
