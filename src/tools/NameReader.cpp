#include "tools/NameReader.h"

#include "base/FolderScan.h"

#include <QFile>

#include <utility>

namespace velmora {
namespace {

bool hasPathText(QByteArrayView name)
{
    const QByteArray bytes = name.toByteArray();
    return !bytes.contains('\\') && QFile::encodeName(QFile::decodeName(bytes)) == bytes;
}

} // namespace

FilePattern filterPattern(const QString &filter)
{
    return FilePattern(filter.isEmpty() ? QByteArray("*") : QFile::encodeName(filter));
}

NameReader::NameReader(Clock &clock)
    : clock_(clock)
{
}

QCoro::Task<SortedNames> NameReader::files(QString folder, FilePattern pattern,
                                           std::stop_token stop)
{
    Turns turns(clock_, std::move(stop));
    FolderScan scan(folder);
    NameList names;
    const auto add = [&](QByteArrayView name) {
        if (pattern.matches(name)) {
            names.add(name);
        }
    };
    const bool isRead = co_await turns.run([&scan, &add] { return scan.readSome(add); });
    if (!isRead) {
        co_return SortedNames();
    }
    names.setReadError(scan.error());
    co_return co_await sorted(&names, &turns);
}

QCoro::Task<SortedNames> NameReader::folders(QString folder, std::stop_token stop)
{
    Turns turns(clock_, std::move(stop));
    FolderScan scan(folder);
    NameList names;
    const auto add = [&names](QByteArrayView name) {
        if (hasPathText(name)) {
            names.add(name);
        }
    };
    const bool isRead = co_await turns.run([&scan, &add] { return scan.readSomeFolders(add); });
    if (!isRead) {
        co_return SortedNames();
    }
    names.setReadError(scan.error());
    co_return co_await sorted(&names, &turns);
}

QCoro::Task<SortedNames> NameReader::sorted(NameList *names, Turns *turns)
{
    const bool isSorted = co_await turns->run([names] { return names->sortSome(); });
    co_return isSorted ? std::make_shared<const NameList>(std::move(*names)) : SortedNames();
}

QCoro::Task<std::optional<QByteArray>> NameReader::first(QString folder, FilePattern pattern,
                                                         std::stop_token stop)
{
    Turns turns(clock_, std::move(stop));
    FolderScan scan(folder);
    QByteArray first;
    const auto compare = [&](QByteArrayView name) {
        if (pattern.matches(name) && (first.isEmpty() || compareNames(name, first) < 0)) {
            first = name.toByteArray();
        }
    };
    const bool isRead = co_await turns.run([&scan, &compare] { return scan.readSome(compare); });
    co_return isRead ? std::optional(first) : std::nullopt;
}

QCoro::Task<std::optional<TakenNames>> NameReader::taken(QString folder, std::stop_token stop)
{
    Turns turns(clock_, std::move(stop));
    FolderScan scan(folder);
    TakenNames names;
    const auto add = [&names](QByteArrayView name) { names.add(name); };
    const bool isRead = co_await turns.run([&scan, &add] { return scan.readSomeEntries(add); });
    names.setReadError(scan.error());
    co_return isRead ? std::optional(std::move(names)) : std::nullopt;
}

QCoro::Task<std::optional<NameFound>> NameReader::holds(QString folder, FilePattern pattern,
                                                        std::stop_token stop)
{
    Turns turns(clock_, std::move(stop));
    FolderScan scan(folder);
    bool found = false;
    const auto look = [&](QByteArrayView name) { found = found || pattern.matches(name); };
    const bool isRead = co_await turns.run([&] { return scan.readSomeEntries(look) && !found; });
    co_return isRead ? std::optional(NameFound{found, scan.error()}) : std::nullopt;
}

} // namespace velmora
