#include "cameras/Credentials.h"

#include "cameras/FolderName.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace velmora {
namespace {

const QString kMask = QStringLiteral("***");
constexpr int kMostRounds = 8; // an address takes one, garbage two or three

// Makers keep inventing names for passwords; those that tell one picture from another are few.
constexpr std::array kHarmlessNames = {
    u"angle",      u"brightness", u"cam",         u"camera",     u"camid",    u"camno",
    u"ch",         u"chan",       u"channel",     u"channelid",  u"chn",      u"codec",
    u"color",      u"colour",     u"compression", u"contrast",   u"dpi",      u"format",
    u"fps",        u"framerate",  u"h",           u"height",     u"id",       u"image",
    u"imagesize",  u"img",        u"index",       u"lang",       u"language", u"mirror",
    u"monitor",    u"no",         u"num",         u"number",     u"page",     u"preset",
    u"profile",    u"quality",    u"res",         u"resolution", u"rotate",   u"rotation",
    u"saturation", u"scale",      u"sharpness",   u"size",       u"snapshot", u"stream",
    u"streamtype", u"substream",  u"subtype",     u"videocodec", u"view",     u"w",
    u"width",      u"zoom",
};

bool isHarmlessName(QStringView name)
{
    return std::ranges::any_of(kHarmlessNames, [name](QStringView harmless) {
        return name.compare(harmless, Qt::CaseInsensitive) == 0;
    });
}

// False if another field could hide in it, by its separators or their codes.
bool isHarmlessValue(const QString &value)
{
    static const QRegularExpression word(QStringLiteral("^(?:[A-Za-z0-9._-]*|[0-9.,:xX*-]*)$"));
    return word.match(value).hasMatch();
}

// Where the part of an address that may hold a user begins: after the scheme of an address at the
// start of the text, or of one of its words. Text before that word may be the start of a password
// itself, unless it holds no sign of one.
qsizetype beginOfAuthority(const QString &text)
{
    static const QRegularExpression scheme(
        QStringLiteral("(?:^|[\\s(\\[{<\"'`])[A-Za-z][A-Za-z0-9+.-]*:[/\\\\]+"));
    const QRegularExpressionMatch found = scheme.match(text);
    const QString before = text.left(found.capturedStart());
    const bool isFirst = found.hasMatch() && !before.contains(u'@') && !before.contains(u':');
    return isFirst ? found.capturedEnd() : 0;
}

// True for what cannot be a host: an address that was cut before its "@". Of a host's name no more
// than 253 characters are possible, and behind its colon only a port, or what a sentence goes on
// with.
bool isCutUser(QStringView authority, bool hasScheme)
{
    static const QRegularExpression tooLong(QStringLiteral("^[^/\\\\?#\\s]{254}"));
    static const QRegularExpression noPort(
        QStringLiteral("^[^:/\\\\?#\\s<\\[]*:\\d{0,5}+(?![/\\\\?#\\s:,;.)\\]}>\"'`]|$)"));
    return tooLong.match(authority).hasMatch() || (hasScheme && noPort.match(authority).hasMatch());
}

// The ":" of "user:password" or "host:port" at the start of an address without a scheme; -1 if
// there is none. One in an IPv6 address or between alternatives is part of the host, and one before
// a blank goes on with a sentence.
qsizetype colonOfLogin(const QString &text)
{
    static const QRegularExpression colon(QStringLiteral(
        "^(?:[^:/\\\\?#<\\[]++|\\[[0-9A-Fa-f:.]*+(?:%[\\w.]*+)?\\]|\\[|<[^>]*+>|<(?![^>]*>)|"
        ":(?=\\s))*+(:)(?![/\\\\]|$)"));
    return colon.match(text).capturedStart(1);
}

bool isCertainHost(QStringView host)
{
    return host.contains(u'.') || host.endsWith(u']') ||
           host.compare(u"localhost", Qt::CaseInsensitive) == 0;
}

// Without a path behind it, a number may be the beginning of a password.
bool isPort(QStringView host, QStringView value)
{
    static const QRegularExpression port(QStringLiteral("^[0-9]{1,5}(?:([/\\\\])|[?#]|$)"));
    const QRegularExpressionMatch found = port.match(value);
    return found.hasMatch() && (found.hasCaptured(1) || isCertainHost(host));
}

// A login whose "@" and host are still to be typed.
QString withoutTypedPassword(const QString &text)
{
    const qsizetype colon = colonOfLogin(text);
    if (colon < 0) {
        return text;
    }
    const QStringView before = QStringView(text).first(colon);
    const QStringView behind = QStringView(text).sliced(colon + 1);
    return isPort(before, behind) ? text : text.first(colon + 1) + kMask;
}

QString withoutUser(const QString &text)
{
    const qsizetype begin = beginOfAuthority(text);
    const qsizetype at = text.lastIndexOf(u'@');
    if (at >= begin) {
        return text.first(begin) + text.sliced(at + 1);
    }
    const bool isCut = isCutUser(QStringView(text).sliced(begin), begin > 0);
    return isCut ? text.first(begin) + kMask : text;
}

// How the piece between two separators is to be read.
enum class UrlPart {
    Host,   // with its port, and whatever stands before it
    Path,   // the name of a folder, name=value or name:value
    Matrix, // fields within the path, after ";" or "&"; a "/" ends them
    Query   // fields to the end
};

UrlPart partBehind(QChar separator, UrlPart before)
{
    if (before == UrlPart::Query || separator == u'?' || separator == u'#') {
        return UrlPart::Query; // a fragment is never sent
    }
    return separator == u'/' || separator == u'\\' ? UrlPart::Path : UrlPart::Matrix;
}

bool separates(QChar c, UrlPart part)
{
    const bool isFragment = c == u'#' && (part == UrlPart::Path || part == UrlPart::Host);
    return QStringView(u"?&;").contains(c) || isFragment ||
           (part != UrlPart::Query && QStringView(u"/\\").contains(c));
}

// The server may read the codes of "@" and "=", also coded themselves, as a user or a field.
bool holdsCodedSecret(const QString &text)
{
    static const QRegularExpression coded(QStringLiteral("%(?:25)*(?:40|3D)"),
                                          QRegularExpression::CaseInsensitiveOption);
    return coded.match(text).hasMatch();
}

// Base64 ends with one or two of them.
bool isPadding(QStringView text)
{
    return text.isEmpty() || text == u"=";
}

// Of "x[secret]" or "x:secret" the part that may be shown; brackets and colons can be coded.
QString shownName(const QString &name)
{
    static const QRegularExpression plain(
        QStringLiteral("^(?:[\\p{L}\\p{N}_.,+~$!* -]|%(?!(?:25)*(?:28|3A|3C|5B|7B)))*"),
        QRegularExpression::CaseInsensitiveOption);
    return plain.match(name).captured();
}

// The ":" of "name:value"; -1 if there is none. One between "<" and ">" separates alternatives of
// an address, and one before a blank goes on with a sentence.
qsizetype colonOfField(const QString &piece)
{
    static const QRegularExpression colon(
        QStringLiteral("^(?:[^:<]++|<[^>]*+>|<(?![^>]*>)|:(?=[\\s:]|$))*+(:)"));
    return colon.match(piece).capturedStart(1);
}

// A time of day ("12:30:45"), or the numbers of a camera that go on with a sentence.
bool isNumbers(QStringView name, const QString &value)
{
    static const QRegularExpression number(QStringLiteral("^[0-9]+$"));
    static const QRegularExpression numbers(QStringLiteral("^[0-9:.,]*(?:\\s.*)?$"));
    return number.match(name.toString()).hasMatch() && numbers.match(value).hasMatch();
}

QString shownColonField(const QString &piece, qsizetype colon)
{
    const QString name = piece.first(colon);
    const QStringView word = QStringView(name).sliced(name.lastIndexOf(u' ') + 1);
    const QString value = piece.sliced(colon + 1);
    const bool isShown = isNumbers(word, value) || (isHarmlessName(word) && isHarmlessValue(value));
    return isShown ? piece : shownName(name) + u':' + kMask;
}

bool isOfPath(UrlPart part)
{
    return part == UrlPart::Path || part == UrlPart::Host;
}

QString shownPiece(const QString &piece, UrlPart part)
{
    const qsizetype equals = piece.indexOf(u'=');
    const QString name = piece.left(equals);
    if (holdsCodedSecret(name)) {
        return kMask;
    }
    const qsizetype colon = part == UrlPart::Path ? colonOfField(piece) : -1;
    if (colon >= 0 && (equals < 0 || colon < equals)) {
        return shownColonField(piece, colon);
    }
    if (equals < 0) {
        const bool isShown = isOfPath(part) || piece.isEmpty() || isHarmlessName(piece);
        return isShown ? piece : kMask;
    }
    const QString value = piece.sliced(equals + 1);
    if (isHarmlessName(name)) {
        return isHarmlessValue(value) ? piece : name + u'=' + kMask;
    }
    return isPadding(value) ? kMask : shownName(name) + u'=' + kMask;
}

// Without a scheme at the beginning, behind that of the first address in the text.
qsizetype beginOfHost(const QString &text)
{
    static const QRegularExpression scheme(QStringLiteral("^[^/\\\\?&;#=@]*:[/\\\\]+"));
    return std::max(beginOfAuthority(text), scheme.match(text).capturedEnd());
}

QString withMaskedFields(const QString &text)
{
    QString shown;
    const qsizetype host = beginOfHost(text);
    UrlPart part = UrlPart::Host;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (separates(text[i], part)) {
            shown += shownPiece(text.sliced(begin, i - begin), part) + text[i];
            begin = i + 1;
            part = begin <= host ? UrlPart::Host : partBehind(text[i], part);
        }
    }
    return shown + shownPiece(text.sliced(begin), part);
}

} // namespace

QString withoutCredentials(const QString &address)
{
    QString before = address;
    QString shown = withMaskedFields(withoutUser(before));
    // Without what was masked, the rest may begin with an address that was cut.
    for (int round = 0; shown != before && round < kMostRounds; ++round) {
        before = std::exchange(shown, withMaskedFields(withoutUser(shown)));
    }
    return shown;
}

QString addressWithoutCredentials(const QString &address)
{
    const QString typed = address.contains(u'@') ? address : withoutTypedPassword(address);
    return withoutTypedPassword(withoutCredentials(typed));
}

QString pathWithoutCredentials(const QString &path)
{
    QStringList names = path.split(u'/');
    for (QString &name : names) {
        const QString address = DecodeFolderName(name);
        const QString shown = addressWithoutCredentials(address);
        if (address != name && shown != address) {
            name = encodeFolderName(shown).remove(u'\\');
        }
    }
    return names.join(u'/');
}

} // namespace velmora
