// Whatever the walk, the modes, the search, the calendar, deletions, captures and the other windows
// do to the browser, in any order: it shows what ModesRule says, and no file comes or goes but
// those that were stored or agreed upon.
#include "HurriedHands.h"
#include "base/ImagesText.h"

#include <QDirIterator>

namespace velmora::test {
namespace {

constexpr int kEvents = 50;
constexpr int kSequences = 25;

class ModesModel : public HurriedHands
{
protected:
    void play(int sequence)
    {
        seed(sequence);
        tidyUp();
        check();
        playEvents(
            *this, kKinds, {sequence, kEvents}, [this](int bound) { return below(bound); },
            [this] {
                house_.settle();
                house_.holdFilm();
                check();
                toFront(house_.window);
            });
    }

private:
    // A new house costs more than a sequence.
    void tidyUp()
    {
        otherWindow(); // one that is hidden while it is in front does not come to the front again
        calendar_.close();
        house_.filmWindow.close();
        house_.window.unload();
        house_.settle();
        QDir(root()).removeRecursively();
        QDir().mkpath(root());
        files_.clear();
        gone_.clear();
        ModesRule start(root());
        const bool sequenceSharesFolder = oneIn(3);
        for (const CameraAddress camera : kAllCameras) {
            const bool isShared = camera == CameraAddress{0, 4} && sequenceSharesFolder;
            const QString url = kUsed.contains(camera)
                                    ? cameraUrl(isShared ? CameraAddress{0, 1} : camera)
                                    : QString();
            if (house_.house.table.url(camera) != url) {
                house_.house.table.setUrl(camera, url);
            }
            start.giveAddress(camera, url);
        }
        fillFolders(start);
        for (int group = 0; group < velmora::kGroups; ++group) {
            const bool isActive = below(3) > 0;
            start.isActive.at(static_cast<std::size_t>(group)) = isActive;
            house_.house.table.setGroupActive(group, isActive);
        }
        house_.house.page.reread();
        start.storedGroup = below(3);
        start.storedRow = below(kRows);
        const SettingsFile &settings = house_.house.settings;
        settings.write(u"Control", u"lstP", start.storedGroup);
        settings.write(u"Control", u"lstImg", start.storedRow);
        for (const auto *const key : {u"Auto", u"Camera", u"Scan"}) {
            settings.write(u"Control", key, 0);
        }
        house_.window.present();
        house_.settle();
        start.reload(now());
        roads_.start(start);
        toFront(house_.window);
    }

    void fillFolders(const ModesRule &start)
    {
        for (const CameraAddress camera : kUsed) {
            for (int images = below(3) * below(9); images > 0; --images) {
                addTo(start.folderOf(camera));
            }
        }
        if (below(2) == 0) {
            addTo(root());
        }
    }

    void addTo(const QString &folder)
    {
        const QString path = folder + u'/' + anyName();
        if (!files_.contains(path)) {
            write(path);
        }
    }

    // Only the roads on which all is as it is to be seen are gone on.
    void check()
    {
        if (!roads_.keep([this](const ModesRule &road) { return seen(road) == meant(road); })) {
            EXPECT_EQ(differences(rule()), QStringList())
                << roads_.all().size() << " roads, hurried: " << hurried_.join(u',').toStdString();
        }
        EXPECT_FALSE(storage().isBeingEdited());
        EXPECT_EQ(house_.question(), nullptr);
        checkFiles();
    }

    QStringList differences(const ModesRule &road)
    {
        const QStringList there = seen(road);
        const QStringList wanted = meant(road);
        QStringList lines;
        for (int i = 0; i < there.size(); ++i) {
            if (there.at(i) != wanted.at(i)) {
                lines.append(there.at(i) + QStringLiteral(" instead of ") + wanted.at(i));
            }
        }
        return lines;
    }

    template <typename... Values>
    static QString line(const char *name, const Values &...values)
    {
        QString text;
        ((QDebug(&text).noquote() << name) << ... << values);
        return text;
    }

    // What is to be seen.
    QStringList seen(const ModesRule &road)
    {
        const auto box = [this](const char *name) -> QLineEdit & {
            return house_.find<QLineEdit>(QLatin1String(name));
        };
        QStringList lines{
            line("camera", row(kGroups), row(kCameras), house_.text(QStringLiteral("lCamera"))),
            line("view", view(kImages).isVisible(), view(kRowsOfGroup).isVisible()),
            line("rows", rowsOf(road.isGroup ? kRowsOfGroup : kImages)),
            line("selected", row(road.isGroup ? kRowsOfGroup : kImages), house_.framed()),
            line("NbI", position()),
            line("bFilm", isFilmEnabled()),
            line("lDate", box("lDate").text(), box("lDate").isEnabled()),
            line("lTime", box("lTime").text(), box("lTime").isEnabled())};
        for (int cell = 0; cell < kCells; ++cell) {
            lines.append(picture(QStringLiteral("Vue%1").arg(cell), road.cells().at(cell)));
        }
        lines.append(picture(QStringLiteral("ZoomImage"), road.zoomed));
        return lines + seenModes() + seenWindows();
    }

    QStringList seenModes()
    {
        const auto mode = [this](const char *box, const char *key) {
            const bool isOn = house_.find<QCheckBox>(QLatin1String(box)).isChecked();
            const QString stored = house_.stored(QString::fromLatin1(key));
            return line(box, isOn, stored == QStringLiteral("1"));
        };
        return {mode("cAuto", "Auto"), mode("cCamera", "Camera"), mode("cScan", "Scan"),
                line("TimerScan", house_.find<QTimer>(QStringLiteral("TimerScan")).isActive()),
                line("stored", house_.stored(u"lstP").toInt(), house_.stored(u"lstImg").toInt())};
    }

    QStringList seenWindows()
    {
        const bool isFilm = house_.filmWindow.isVisible();
        const QString button = house_.find<QAbstractButton>(QStringLiteral("PauseCine")).text();
        const auto &day = *calendar_.findChild<QLabel *>(QStringLiteral("calendarDay"));
        return {line("film", isFilm, isFilm ? button : QString()),
                line("calendar", calendar_.isVisible(),
                     calendar_.isVisible() ? day.text() : QString())};
    }

    // One that has vanished may still be on show.
    QString picture(const QString &name, const QString &path)
    {
        const QString there = QDir::cleanPath(house_.find<QWidget>(name).accessibleDescription());
        return name + u' ' + (there.isEmpty() && gone_.contains(path) ? path : there);
    }

    QStringList rowsOf(const QString &list)
    {
        QStringList rows;
        for (int row = 0; row < view(list).model()->rowCount(); ++row) {
            rows.append(view(list).model()->index(row, 0).data().toString());
        }
        return rows;
    }

    // And what must be.
    QStringList meant(const ModesRule &road)
    {
        const QString url = road.address(road.camera);
        const QList<int> frames = road.frame() < 0 ? QList<int>() : QList<int>{road.frame()};
        QStringList lines{line("camera", road.camera.group, road.camera.row,
                               url.isEmpty() ? QStringLiteral("no camera") : url.mid(7)),
                          line("view", !road.isGroup, road.isGroup),
                          line("rows", road.isGroup ? rowsOfGroup(road) : road.list),
                          line("selected", road.isGroup ? road.row : road.index, frames),
                          line("NbI", road.position),
                          line("bFilm", road.isFilmEnabled),
                          line("lDate", road.date, !road.isGroup),
                          line("lTime", road.time, !road.isGroup)};
        for (int cell = 0; cell < kCells; ++cell) {
            lines.append(QStringLiteral("Vue%1 ").arg(cell) + road.cells().at(cell));
        }
        lines.append(QStringLiteral("ZoomImage ") + road.zoomed);
        return lines + meantModes(road) + meantWindows(road);
    }

    static QStringList rowsOfGroup(const ModesRule &road)
    {
        QStringList rows;
        for (const QString &path : road.newest) {
            rows.append(path.isEmpty() ? QString()
                                       : QFileInfo(path).fileName() + QStringLiteral("  "));
        }
        return rows;
    }

    static QStringList meantModes(const ModesRule &road)
    {
        return {line("cAuto", road.isAuto, road.isAuto),
                line("cCamera", road.isGroup, road.isGroup),
                line("cScan", road.isScan, road.isScan), line("TimerScan", road.isScan),
                line("stored", road.storedGroup, road.storedRow)};
    }

    static QStringList meantWindows(const ModesRule &road)
    {
        using Film = ModesRule::Film;
        const QString button = road.film == Film::Closed   ? QString()
                               : road.film == Film::Paused ? QStringLiteral("Start")
                                                           : QStringLiteral("Pause");
        return {
            line("film", road.film != Film::Closed, button),
            line("calendar", road.isCalendarOpen, road.isCalendarOpen ? dayText(road) : QString())};
    }

    static QString dayText(const ModesRule &road)
    {
        if (road.chosenDay.isEmpty()) {
            return {};
        }
        const auto isOfDay = [&road](const QString &name) {
            return name.startsWith(road.chosenDay);
        };
        const QStringList known = road.known();
        const QDate day = QDate::fromString(road.chosenDay, QStringLiteral("yyyyMMdd"));
        return QLocale().toString(day, QLocale::LongFormat) + QStringLiteral(": ") +
               imagesText(std::ranges::count_if(known, isOfDay));
    }

    void checkFiles()
    {
        std::set<QString> there = allFiles();
        there.erase(root() + QStringLiteral("/tmp/Target.jpg")); // the live view's
        QStringList others;
        std::ranges::set_symmetric_difference(there, files_, std::back_inserter(others));
        EXPECT_EQ(others, QStringList());
    }

    std::set<QString> allFiles()
    {
        std::set<QString> paths;
        QDirIterator files(house_.house.tree.path(u"drives/c"), QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            paths.insert(QDir::cleanPath(files.next()));
        }
        return paths;
    }

    void hurry()
    {
        hurried_.clear();
        HurriedHands::hurry(kHurried, [this](const EventKind<ModesModel> &kind) {
            hurried_.append(QString::fromLatin1(kind.name));
            (this->*kind.run)();
        });
    }

    static const std::vector<EventKind<ModesModel>> kKinds;
    static const std::vector<EventKind<ModesModel>> kHurried;

    QStringList hurried_; // in the last hurry
};

const std::vector<EventKind<ModesModel>> ModesModel::kHurried{
    {"click a group", &ModesModel::clickGroup},   {"key on the groups", &ModesModel::keyGroup},
    {"a camera", &ModesModel::hurriedCamera, 4},  {"an image", &ModesModel::hurriedImage, 4},
    {"F5", &ModesModel::keyRefresh, 2},           {"click cAuto", &ModesModel::clickAuto},
    {"click cCamera", &ModesModel::clickView, 2}, {"press bFilm", &ModesModel::hurriedFilm},
    {"walk", &ModesModel::hurriedWalk, 3},        {"store", &ModesModel::hurriedStore, 2}};

const std::vector<EventKind<ModesModel>> ModesModel::kKinds{
    {"click a group", &ModesModel::clickGroup},
    {"key on the groups", &ModesModel::keyGroup},
    {"click a camera", &ModesModel::clickCamera},
    {"key on the cameras", &ModesModel::keyCamera},
    {"click an image", &ModesModel::clickImage, 2},
    {"key on the images", &ModesModel::keyImage, 2},
    {"Enter or Escape", &ModesModel::keyZoom},
    {"F5", &ModesModel::keyRefresh},
    {"click a cell", &ModesModel::clickCell, 2},
    {"right press on a cell", &ModesModel::pressCellRight, 2},
    {"double click a cell", &ModesModel::doubleClickCell},
    {"click cAuto", &ModesModel::clickAuto},
    {"click cCamera", &ModesModel::clickView, 2},
    {"click cScan", &ModesModel::clickScan, 2},
    {"walk", &ModesModel::walk, 3},
    {"walk on", &ModesModel::walkOn},
    {"type", &ModesModel::type, 3},
    {"enter a search", &ModesModel::enterSearch, 2},
    {"tab", &ModesModel::tab, 2},
    {"capture", &ModesModel::capture, 3},
    {"add an image", &ModesModel::addImage, 2},
    {"vanish", &ModesModel::vanish},
    {"vanish whole", &ModesModel::vanishWhole},
    {"delete", &ModesModel::deleteImage, 3},
    {"press bFilm", &ModesModel::pressFilm, 2},
    {"press PauseCine", &ModesModel::pausePressed},
    {"close the film", &ModesModel::closeFilm},
    {"press cSetUp", &ModesModel::pressSetup},
    {"hide the main window", &ModesModel::hideMain},
    {"click a tab", &ModesModel::clickTab},
    {"switch a group", &ModesModel::switchGroup, 2},
    {"type an address", &ModesModel::typeAddress},
    {"quit", &ModesModel::quit},
    {"hurry", &ModesModel::hurry, 6},
    {"other window", &ModesModel::otherWindow},
    {"rest", &ModesModel::rest},
    {"pass time", &ModesModel::passTime},
    {"open the calendar", &ModesModel::openCalendar},
    {"close the calendar", &ModesModel::closeCalendar},
    {"click a day", &ModesModel::clickDay, 2},
    {"click an hour", &ModesModel::clickHour}};

TEST_F(ModesModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) { play(sequence); });
}

} // namespace
} // namespace velmora::test
