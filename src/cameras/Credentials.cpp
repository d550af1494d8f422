#include "cameras/Credentials.h"

#include "cameras/FolderName.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

const QString kMask = QStringLiteral("***");

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
enum class Place {
    Path,   // the name of a folder, or name=value
    Matrix, // fields within the path, after ";" or "&"; a "/" ends them
    Query   // fields to the end
};

Place placeBehind(QChar separator, Place before)
{
    if (before == Place::Query || separator == u'?') {
        return Place::Query;
    }
    return separator == u'/' || separator == u'\\' ? Place::Path : Place::Matrix;
}

bool separates(QChar c, Place place)
{
    return QStringView(u"?&;").contains(c) ||
           (place != Place::Query && QStringView(u"/\\").contains(c));
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

QString shownPiece(const QString &piece, Place place)
{
    const qsizetype equals = piece.indexOf(u'=');
    const QString name = piece.left(equals);
    if (holdsCodedSecret(name)) {
        return kMask;
    }
    if (equals < 0) {
        const bool isShown = place == Place::Path || piece.isEmpty() || isHarmlessName(piece);
        return isShown ? piece : kMask;
    }
    const QString value = piece.sliced(equals + 1);
    if (isHarmlessName(name)) {
        return isHarmlessValue(value) ? piece : name + u'=' + kMask;
    }
    return isPadding(value) ? kMask : name + u'=' + kMask;
}

QString withMaskedFields(const QString &text)
{
    QString shown;
    Place place = Place::Path;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (separates(text[i], place)) {
            shown += shownPiece(text.sliced(begin, i - begin), place) + text[i];
            place = placeBehind(text[i], place);
            begin = i + 1;
        }
    }
    return shown + shownPiece(text.sliced(begin), place);
}

} // namespace

QString withoutCredentials(const QString &address)
{
    return withMaskedFields(withoutUser(address));
}

QString pathWithoutCredentials(const QString &path)
{
    QStringList names = path.split(u'/');
    for (QString &name : names) {
        const QString address = DecodeFolderName(name);
        const QString shown = withoutCredentials(address);
        if (address != name && shown != address) {
            name = encodeFolderName(shown).remove(u'\\');
        }
    }
    return names.join(u'/');
}

} // namespace velmora
