#include "admin/CameraList.h"

#include "admin/ListText.h"
#include "base/OneLine.h"
#include "cameras/AddressRule.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <iterator>

namespace velmora {
namespace {

// Far more than a hundred cameras can need, yet read in a moment.
constexpr qsizetype kMostBytes = qsizetype{1024} * 1024;
constexpr std::size_t kMostLines = 10'000;
constexpr std::array kSeparators = {u'\t', u';', u','};

/// Positions of a table's columns; -1 for a missing one.
struct Columns
{
    qsizetype name = 0;
    qsizetype address = 1;
    qsizetype group = 2;
    qsizetype row = 3;
};

constexpr Columns kAddressFirst{1, 0, 2, 3};

// Tells an address from other text where nothing else does.
bool looksLikeAddress(const QString &text)
{
    return !text.contains(u' ') &&
           (text.contains(u'/') || text.contains(u'.') || text.contains(u':'));
}

std::optional<Columns> namedColumns(const TableLine &line)
{
    QStringList words;
    for (const QString &field : line.fields) {
        words.append(field.toLower());
    }
    const qsizetype url = words.indexOf(QStringLiteral("url"));
    const qsizetype address = words.indexOf(QStringLiteral("address"));
    if (url < 0 && address < 0) {
        return std::nullopt;
    }
    return Columns{words.indexOf(QStringLiteral("name")), address < 0 ? url : address,
                   words.indexOf(QStringLiteral("group")), words.indexOf(QStringLiteral("row"))};
}

// Rather than the rest of an address that holds the separator.
bool mayBeName(const QString &field)
{
    static const QRegularExpression ofAddress(QStringLiteral("[/.=?&:@]|^[0-9]+$"));
    return !ofAddress.match(field).hasMatch();
}

// In every line, and a name behind at least one of them.
bool haveAddressFirst(const std::vector<TableLine> &lines)
{
    bool isAnyNamed = false;
    for (const TableLine &line : lines) {
        const QStringList &fields = line.fields;
        const bool fits =
            fields.size() > 1 && fields[0].contains(QStringLiteral("://")) && mayBeName(fields[1]);
        if (!fits) {
            return false;
        }
        isAnyNamed = isAnyNamed || !fields[1].isEmpty();
    }
    return isAnyNamed;
}

/// Where a table has what.
struct Layout
{
    Columns columns;
    std::ptrdiff_t firstCamera = 0; // among its lines
};

// A table without column names has an address in the second field of its first line.
std::optional<Layout> usualLayout(const std::vector<TableLine> &lines)
{
    if (const std::optional<Columns> named = namedColumns(lines.front())) {
        return Layout{*named, 1};
    }
    const QStringList &first = lines.front().fields;
    const bool isTable =
        first.size() > 1 && !first[0].contains(QStringLiteral("://")) && looksLikeAddress(first[1]);
    return isTable ? std::optional(Layout{}) : std::nullopt;
}

std::optional<Layout> addressFirstLayout(const std::vector<TableLine> &lines)
{
    return haveAddressFirst(lines) ? std::optional(Layout{kAddressFirst, 0}) : std::nullopt;
}

QString fieldAt(const TableLine &line, qsizetype column)
{
    return column >= 0 && column < line.fields.size() ? line.fields[column] : QString();
}

QString noAddress(const QString &line)
{
    return QStringLiteral("\"%1\" is not an address")
        .arg(withoutCredentials(line).left(kMaxNameLength));
}

// The rule of the window and of --add: a table says itself what its addresses are.
QString addressFault(const QString &address)
{
    if (address.isEmpty()) {
        return QStringLiteral("there is no address");
    }
    if (holdsControls(address)) {
        return QStringLiteral("the address holds a line break or another control character");
    }
    if (const auto refusal = addressRefusal(address, 0)) {
        return QStringLiteral("the address is longer than 255 characters");
    }
    return addressLoss(address, 0)
               ? QStringLiteral("the settings file cannot hold this address: it keeps 254 "
                                "characters of the Western European set")
               : QString();
}

std::optional<int> digit(const QString &text, ListedCamera &camera, QLatin1String what)
{
    if (text.isEmpty()) {
        return std::nullopt;
    }
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || !text.front().isDigit() || number >= kRows) {
        camera.fault = QStringLiteral("a %1 is a number from 0 to 9").arg(what);
        return std::nullopt;
    }
    return number;
}

ListedCamera tableCamera(const TableLine &line, const Columns &columns)
{
    ListedCamera camera;
    camera.line = line.number;
    camera.name = fieldAt(line, columns.name);
    camera.address = bareAddress(fieldAt(line, columns.address));
    camera.fault = addressFault(camera.address);
    if (const auto refusal = nameRefusal(camera.name)) {
        camera.fault = *refusal;
    }
    camera.group = digit(fieldAt(line, columns.group), camera, QLatin1String("group"));
    camera.row = digit(fieldAt(line, columns.row), camera, QLatin1String("row"));
    return camera;
}

// False for a text that is no table. A separator that is only part of an address must not make one
// with the address first.
bool readTable(CameraList &list, const QString &text)
{
    for (const auto &layoutOf : {usualLayout, addressFirstLayout}) {
        for (const QChar separator : kSeparators) {
            const std::vector<TableLine> lines = tableLines(text, separator);
            const auto layout = lines.empty() ? std::nullopt : layoutOf(lines);
            if (layout) {
                std::transform(lines.begin() + layout->firstCamera, lines.end(),
                               std::back_inserter(list.cameras), [&layout](const TableLine &line) {
                                   return tableCamera(line, layout->columns);
                               });
                return true;
            }
        }
    }
    return false;
}

void readLines(CameraList &list, const QString &text)
{
    static const QRegularExpression lineEnd(QStringLiteral("\\r\\n|\\r|\\n"));
    int number = 0;
    for (const QStringView line : QStringView(text).split(lineEnd)) {
        ++number;
        const QStringView typed = line.trimmed();
        if (!typed.isEmpty() && !typed.startsWith(u'#')) {
            const QString address = bareAddress(typed.toString());
            ListedCamera camera;
            camera.line = number;
            camera.address = address;
            camera.fault = looksLikeAddress(address) ? addressFault(address) : noAddress(address);
            list.cameras.push_back(std::move(camera));
        }
    }
}

CameraList unreadable(const QString &why)
{
    return {{}, why};
}

} // namespace

CameraList readCameraList(QByteArrayView bytes)
{
    if (bytes.size() > kMostBytes) {
        return unreadable(QStringLiteral("The list is far longer than a hundred cameras can be"));
    }
    const std::optional<QString> text = listText(bytes);
    if (!text) {
        return unreadable(QStringLiteral("The list is not a text file"));
    }
    CameraList list;
    if (!readTable(list, *text)) {
        readLines(list, *text);
    }
    return list.cameras.size() > kMostLines
               ? unreadable(QStringLiteral("The list has %1 lines; there is room for a hundred "
                                           "cameras")
                                .arg(list.cameras.size()))
               : list;
}

QByteArray cameraListText(const std::vector<ListedCamera> &cameras)
{
    const auto number = [](const std::optional<int> &value) {
        return value ? QString::number(*value) : QString();
    };
    QString text = QStringLiteral("name,address,group,row\r\n");
    for (const ListedCamera &camera : cameras) {
        text += QStringList{tableField(camera.name), tableField(camera.address),
                            number(camera.group), number(camera.row)}
                    .join(u',') +
                QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

} // namespace velmora
