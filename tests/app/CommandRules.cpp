#include "CommandRules.h"

#include "cameras/Credentials.h"

#include <QSet>

#include <algorithm>

namespace velmora::test {
namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

Word taken(const char *typed, const char *stored = nullptr, const char *shown = nullptr)
{
    Word word{text(typed)};
    word.stored = stored == nullptr ? word.typed : text(stored);
    word.shown = shown == nullptr ? word.stored : text(shown);
    return word;
}

Word refused(const QString &typed)
{
    return {typed, Verdict::Refused};
}

Word malformed(const char *typed)
{
    return {text(typed), Verdict::Malformed};
}

QString field(QString value)
{
    const bool isPlain = !value.contains(u',') && !value.contains(u'"') &&
                         value.trimmed() == value && !value.startsWith(u'#');
    return isPlain ? value : u'"' + value.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

bool isFree(RowReference &rules, CameraAddress camera)
{
    return rules.at(camera).url.isEmpty();
}

// A camera and its line, once it has a place.
struct Placed
{
    const ListLine &line;
    std::optional<CameraAddress> place;
};

// Rows that the list names itself are taken first.
class Seats
{
public:
    explicit Seats(RowReference &rules)
        : rules_(rules)
    {
    }

    bool take(CameraAddress camera)
    {
        return isFree(rules_, camera) && std::exchange(taken_[camera], true) == false;
    }

    std::optional<CameraAddress> next(const QString &group)
    {
        for (const CameraAddress camera : kAllCameras) {
            const bool fits = group.isEmpty() || group.toInt() == camera.group;
            if (fits && take(camera)) {
                return camera;
            }
        }
        return std::nullopt;
    }

private:
    RowReference &rules_;
    PerCamera<bool> taken_;
};

std::optional<QList<Placed>> placed(RowReference &rules, const QList<ListLine> &list)
{
    QSet<QString> known;
    for (const CameraAddress camera : kAllCameras) {
        known.insert(rules.at(camera).url);
    }
    Seats seats(rules);
    QList<Placed> all;
    for (const ListLine &line : list) {
        if (line.isWrong) {
            return std::nullopt;
        }
        if (known.contains(line.address)) {
            continue;
        }
        known.insert(line.address);
        std::optional<CameraAddress> place;
        if (!line.row.isEmpty()) {
            place = CameraAddress{line.group.toInt(), line.row.toInt()};
            if (line.group.isEmpty() || !seats.take(*place)) {
                return std::nullopt;
            }
        }
        all.append({line, place});
    }
    for (Placed &one : all) {
        one.place = one.place ? one.place : seats.next(one.line.group);
        if (!one.place) {
            return std::nullopt;
        }
    }
    return all;
}

} // namespace

const QList<Word> kAddressWords{
    taken("http://a/1.jpg"),
    taken("http://b/2.png"),
    taken("  http://a/3.jpg ", "http://a/3.jpg"),
    taken("http://me:geheim7@a/1.jpg", nullptr, "http://a/1.jpg"),
    taken("http://b/1.jpg?pass=geheim7", nullptr, "http://b/1.jpg?pass=***"),
    taken("http://a/Löffel,1.jpg"),
    taken("rtsp://a/\"x\";y,z", nullptr, "rtsp://a/\"x\";***"),
    taken("#a/b", nullptr, "#***"),
    {QStringLiteral("http://h/") + QString(245, u'.')},
    refused(QString(255, u'a')),
    refused(QString(256, u'a')),
    refused(QString(5000, u'a')),
    refused(text("http://日本/")),
    refused(text("http://a/\tb")),
    refused(text("http://a/\nlst3=x")),
    malformed(""),
    malformed("   "),
    malformed("-"),
    malformed("--list"),
};

const QList<Word> kNameWords{
    taken("Gate"),
    taken(""),
    taken("  Yard ", "Yard"),
    taken("\"quoted\""),
    taken("'q'"),
    taken("\""),
    taken("\"\""),
    taken("Löffel € ; # ="),
    taken("#1, \"b\"; c"),
    taken(";x"),
    taken("[Control]"),
    taken("a=b"),
    taken("-minus"),
    {QString(60, u'n')},
    refused(QString(61, u'n')),
    refused(QString(9000, u'n')),
    refused(text("a\nb")),
    refused(text("a\tb")),
    refused(text("x\n")),
    refused(text("a\r\nName=b")),
    refused(text("日本")),
};

const QList<Word> kKeepWords{
    taken("dated", ""),
    taken("differing"),
    taken("clearly:1"),
    taken("clearly:100"),
    taken("clearly:05", "clearly:5"),
    refused(text("clearly:0")),
    refused(text("clearly:101")),
    malformed("clearly:"),
    malformed("clearly:-5"),
    malformed("often"),
    malformed("Differing"),
    malformed(" dated"),
    malformed("differing\n"),
    malformed("clearly:5\n"),
    malformed("clearly:5x"),
    malformed("http://me:geheim7@a/"),
    malformed(""),
};

const QList<Word> kSwitchWords{
    taken("on", "1"),  taken("off", "0"),
    taken("1"),        taken("0"),
    malformed("ON"),   malformed("on "),
    malformed("on\n"), malformed("2"),
    malformed(""),     malformed("http://me:geheim7@a/"),
};

const QList<Word> kTickWords{
    taken("30"),         taken("60"),        taken("90", "60"),
    taken("+45", "45"),  taken("-50", "50"), taken("040", "40"),
    taken("55.9", "55"), malformed(""),      malformed("x"),
    malformed("30 "),    malformed("30\n"),  malformed("1e1"),
    malformed("3,5"),    malformed("30."),   malformed("http://me:geheim7@a/"),
};

const QList<Word> kTimeoutWords{
    taken("5"),
    taken("2", "5"),
    taken("0", "5"),
    taken("-30", "30"),
    taken("7.9", "7"),
    taken("100000"),
    malformed(""),
    malformed("x"),
    malformed("\n7"),
    malformed("7\n"),
    malformed("http://me:geheim7@a/"),
};

const QList<Word> kStorageWords{
    taken("C:\\in", "C:\\in\\", "drives/c/in"),
    taken("C:\\in2\\", "C:\\in2\\", "drives/c/in2"),
    taken("C:/in2", "C:\\in2\\", "drives/c/in2"),
    taken("C:\\none", "C:\\none\\", "drives/c/none"),
    refused(QStringLiteral("C:\\") + QString(300, u'a')),
    refused(text("C:\\日本")),
    refused(text("/srv/a b")),
    malformed(""),
    malformed("  "),
    malformed("http://me:geheim7@a/"),
    malformed("C:\\in\n"),
    malformed("http:\\\\me:geheim7@a"),
};

QString shownUrl(const QString &url)
{
    for (const Word &word : kAddressWords) {
        if (word.stored == url) {
            return word.shown;
        }
    }
    return addressWithoutCredentials(url); // of two, one dropped behind the other
}

QString placeText(CameraAddress camera)
{
    return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
}

std::optional<CameraAddress> freeRow(RowReference &rules)
{
    for (const CameraAddress camera : kAllCameras) {
        if (isFree(rules, camera)) {
            return camera;
        }
    }
    return std::nullopt;
}

QString offNote(const RowReference &rules, QList<int> groups)
{
    std::ranges::sort(groups);
    QStringList lines;
    for (const int group : groups) {
        if (rules.active.at(static_cast<std::size_t>(group)) != u"1") {
            lines.append(
                QStringLiteral("Group %1 is off; --set group.%1=on switches it on").arg(group));
        }
    }
    lines.removeDuplicates();
    return lines.join(u'\n');
}

ListOutcome takeList(RowReference &rules, const QList<ListLine> &list)
{
    const auto all = placed(rules, list);
    if (!all) {
        return {};
    }
    ListOutcome outcome{true, {}, {}};
    for (const Placed &one : *all) {
        outcome.out += placeText(*one.place) + u' ' + shownUrl(one.line.address) + u'\n';
        outcome.groups.append(one.place->group);
        rules.at(*one.place).add(one.line.address, one.line.name);
    }
    return outcome;
}

QList<ListLine> linesOfTable(RowReference &rules)
{
    QList<ListLine> lines;
    for (const CameraAddress camera : kAllCameras) {
        const StoredCamera &stored = rules.at(camera);
        if (!stored.url.isEmpty()) {
            lines.append({stored.choices[QStringLiteral("Name")], stored.url,
                          QString::number(camera.group), QString::number(camera.row)});
        }
    }
    return lines;
}

QString exportedText(RowReference &rules)
{
    QString all = QStringLiteral("name,address,group,row\r\n");
    for (const ListLine &line : linesOfTable(rules)) {
        all += QStringList{field(line.name), field(line.address), line.group, line.row}.join(u',') +
               QStringLiteral("\r\n");
    }
    return all;
}

QString listedText(RowReference &rules)
{
    QString all;
    for (const CameraAddress camera : kAllCameras) {
        const StoredCamera &stored = rules.at(camera);
        if (!stored.url.isEmpty()) {
            const bool isOn = rules.active.at(static_cast<std::size_t>(camera.group)) == u"1";
            const QString keep = stored.choices[QStringLiteral("Keep")];
            all += QStringList{placeText(camera), shownUrl(stored.url),
                               stored.choices[QStringLiteral("Name")],
                               isOn ? QStringLiteral("on") : QStringLiteral("off"),
                               keep.isEmpty() ? QStringLiteral("dated") : keep}
                       .join(u'\t') +
                   u'\n';
        }
    }
    return all;
}

} // namespace velmora::test
