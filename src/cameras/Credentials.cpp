#include "cameras/Credentials.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

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

const QString kMask = QStringLiteral("***");

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

QString withoutUser(const QString &text)
{
    const qsizetype begin = beginOfAuthority(text);
    const qsizetype at = text.lastIndexOf(u'@');
    return at < begin ? text : text.first(begin) + text.sliced(at + 1);
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

QString shownPiece(const QString &piece, Place place)
{
    const qsizetype equals = piece.indexOf(u'=');
    if (equals < 0) {
        const bool isShown = place == Place::Path || piece.isEmpty() || isHarmlessName(piece);
        return isShown ? piece : kMask;
    }
    const QString name = piece.first(equals);
    const bool isShown = isHarmlessName(name) && isHarmlessValue(piece.sliced(equals + 1));
    return isShown ? piece : name + u'=' + kMask;
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

} // namespace velmora
