#include "ImportReference.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace velmora::test {
namespace {

constexpr int kLongestName = 255;
constexpr int kDotAt = 19;
constexpr int kStem = 15;
constexpr int kNumbered = 20;

bool comesFirst(const QString &a, const QString &b)
{
    const int order = QString::compare(a.toLower(), b.toLower());
    return order != 0 ? order < 0 : a < b;
}

QStringList inOrder(QStringList names)
{
    std::ranges::sort(names, comesFirst);
    return names;
}

QString fourDigits(int number)
{
    return (QStringLiteral("0000") + QString::number(number)).right(4);
}

QString newName(const QString &path, int collisions)
{
    const QFileInfo info(path);
    if (keepsItsName(info.fileName())) {
        return info.fileName();
    }
    const QDateTime born = info.birthTime().isValid() ? info.birthTime() : info.lastModified();
    const QString name = info.fileName();
    return born.toString(QStringLiteral("yyyyMMdd_HHmmss")) + fourDigits(collisions) + u'.' +
           name.mid(name.indexOf(u'.') + 1);
}

// The system itself lets no one read it.
bool isUnreadable(const QString &path)
{
    return QFileInfo(path).symLinkTarget().startsWith(u"/proc/");
}

} // namespace

bool isWanted(const QString &filter, const QString &name)
{
    if (filter.isEmpty() || filter == u"*.*") {
        return true;
    }
    QString pattern = QRegularExpression::escape(filter);
    pattern.replace(QStringLiteral("\\*"), QStringLiteral(".*"));
    pattern.replace(QStringLiteral("\\?"), QStringLiteral("."));
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::CaseInsensitiveOption)
        .match(name)
        .hasMatch();
}

QStringList wantedFiles(const QString &folder, const QString &filter)
{
    QStringList names;
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        if (isWanted(filter, name)) {
            names.append(name);
        }
    }
    return inOrder(names);
}

QStringList subFoldersOf(const QString &folder)
{
    return inOrder(QDir(folder).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot));
}

bool keepsItsName(const QString &name)
{
    return name.startsWith(u'2') && name.indexOf(u'.') == kDotAt;
}

QString firstStored(const QString &folder)
{
    static const QRegularExpression shape(
        QRegularExpression::anchoredPattern(QStringLiteral(".{8}_.{10}\\..*|[^.]{8}_[^.]{10}")));
    for (const QString &name : inOrder(QDir(folder).entryList(QDir::Files | QDir::Hidden))) {
        if (shape.match(name).hasMatch()) {
            return folder + u'/' + name;
        }
    }
    return {};
}

QString encodedAddress(const QString &address)
{
    QString name;
    for (const QChar letter : address) {
        const bool isPlain =
            (letter >= u'a' && letter <= u'z') || (letter >= u'A' && letter <= u'Z');
        name += isPlain ? QString(letter) : u'%' + QString::number(letter.unicode(), 16).toUpper();
    }
    return name;
}

bool isPicture(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xD8");
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return !isUnreadable(path) && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QMap<QString, QByteArray> AllFiles::read(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (QFileInfo(path).dir().dirName() == u"tmp") {
            continue;
        }
        const std::optional<FileStamp> stamp = fileStamp(path);
        Seen &seen = seen_[path];
        if (seen.stamp != stamp) {
            seen = {stamp, bytesOf(path)};
        }
        files.insert(path, seen.bytes);
    }
    return files;
}

RunOutcome runOutcome(const QString &source, const QString &filter, const QString &target)
{
    RunOutcome run;
    int counter = 0;
    QSet<QString> taken;
    for (const QString &name : QDir(target).entryList(QDir::AllEntries | QDir::Hidden |
                                                      QDir::System | QDir::NoDotAndDotDot)) {
        taken.insert(name.toLower());
    }
    for (const QString &name : wantedFiles(source, filter)) {
        QString to = newName(source + u'/' + name, counter);
        bool isPossible = QFileInfo(target).isDir() && !isUnreadable(source + u'/' + name);
        run.mayRunOut = run.mayRunOut || to.size() < kNumbered + 3;
        while (isPossible && taken.contains(to.toLower())) {
            isPossible = to.size() >= kNumbered;
            ++counter;
            to = to.left(kStem) + fourDigits(counter) + to.mid(kNumbered);
        }
        if (!isPossible || to.size() > kLongestName) {
            run.isAborted = true;
            run.culprit = QFileInfo(target).isDir() ? name : QStringLiteral("the ");
            return run;
        }
        taken.insert(to.toLower());
        run.copied.append(name);
        run.copiedTo.append(to);
        run.collisions = counter;
    }
    return run;
}

} // namespace velmora::test
