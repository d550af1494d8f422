#include "ProgramChecks.h"

#include "base/AnsiText.h"
#include "base/ImagesText.h"

#include <QDebug>
#include <QDirIterator>
#include <QTimer>

#include <algorithm>

namespace velmora::test {
namespace {

constexpr int kOrange = 33023;
constexpr int kPatience = 1000; // ms

template <typename... Values>
QString line(const QString &name, const Values &...values)
{
    QString text;
    ((QDebug(&text).noquote() << name) << ... << values);
    return text;
}

QStringList rowsOfGroup(const ModesRule &browser)
{
    QStringList rows;
    for (const QString &path : browser.newest) {
        rows.append(path.isEmpty() ? QString() : QFileInfo(path).fileName() + QStringLiteral("  "));
    }
    return rows;
}

QStringList differencesOf(const QStringList &there, const QStringList &wanted)
{
    QStringList lines;
    for (int i = 0; i < there.size(); ++i) {
        if (there.at(i) != wanted.at(i)) {
            lines.append(there.at(i) + QStringLiteral(" instead of ") + wanted.at(i));
        }
    }
    return lines;
}

} // namespace

void ProgramChecks::check()
{
    followFront();
    const QStringList different = remaining([this] { return differences(); });
    EXPECT_EQ(different.join(u'\n').toStdString(), std::string());
    EXPECT_FALSE(isBrowser_ && !isPassing_ && showsOldName());
    checkLate();
    checkFile();
    checkImages();
}

// What is still being painted comes a little later.
template <typename Look>
QStringList ProgramChecks::remaining(Look look)
{
    QStringList lines = look();
    const bool isOver = lines.isEmpty() || QTest::qWaitFor(
                                               [&] {
                                                   rest();
                                                   lines = look();
                                                   return lines.isEmpty();
                                               },
                                               kPatience);
    return isOver ? QStringList() : lines;
}

QStringList ProgramChecks::differences()
{
    return differencesOf(seen(), meant());
}

void ProgramChecks::checkAfterHurry(std::size_t images)
{
    takeSelection();
    if (!isBrowser_ || isAway_) {
        return;
    }
    ModesRule fresh = browser_;
    fresh.refresh();
    const auto look = [&] { return differencesOf(onShow(), meantOnShow(fresh)); };
    EXPECT_EQ((files_.size() == images ? remaining(look) : QStringList()).join(u'\n').toStdString(),
              std::string());
    toFront(kBrowser);
    QTest::keyClick(topLevel(kBrowser)->windowHandle(), Qt::Key_F5);
    browser_.refresh();
    rest();
}

// The film is closed, and nothing is enlarged.
void ProgramChecks::takeSelection()
{
    topLevel(kFilm)->close();
    if (isBrowser_) {
        toFront(kBrowser);
        QTest::keyClick(topLevel(kBrowser), Qt::Key_Escape);
    }
    rest();
    browser_.film = ModesRule::Film::Closed;
    browser_.hideZoom();
    browser_.camera = {rowOf(kListGroups), rowOf(kListCameras)};
    takeStoredPlaces();
    browser_.date = find<QLineEdit>(kBrowser, QStringLiteral("lDate")).text();
    browser_.time = find<QLineEdit>(kBrowser, QStringLiteral("lTime")).text();
}

void ProgramChecks::takeStoredPlaces()
{
    const QMap<QString, QString> stored = file();
    browser_.storedGroup = stored[QStringLiteral("Control lstP")].toInt();
    browser_.storedRow = stored[QStringLiteral("Control lstImg")].toInt();
}

QStringList ProgramChecks::onShow()
{
    const QString of = browser_.isGroup ? kListRows : kListImages;
    QStringList lines{
        known(text(kBrowser, QStringLiteral("lCamera")), browser_.camera),
        line(QStringLiteral("view"), list(kListImages).isVisible(), list(kListRows).isVisible()),
        line(QStringLiteral("rows"), rowsOf(list(of)))};
    for (int cell = 0; cell < kRows && browser_.isGroup; ++cell) {
        lines.append(picture(QStringLiteral("Vue%1").arg(cell), QString()));
    }
    return lines;
}

QStringList ProgramChecks::meantOnShow(const ModesRule &browser)
{
    QStringList lines{
        shownCamera(browser.camera),
        line(QStringLiteral("view"), !browser.isGroup, browser.isGroup),
        line(QStringLiteral("rows"), browser.isGroup ? rowsOfGroup(browser) : browser.list)};
    for (int cell = 0; cell < kRows && browser.isGroup; ++cell) {
        lines.append(QStringLiteral("Vue%1 ").arg(cell) + browser.cells().at(cell));
    }
    return lines;
}

QStringList ProgramChecks::seen()
{
    const bool isFilm = isVisible(kFilm);
    const QString button = find<QAbstractButton>(kFilm, QStringLiteral("PauseCine")).text();
    QStringList lines{line(QStringLiteral("windows"), isVisible(kMain), isVisible(kBrowser)),
                      line(QStringLiteral("film"), isFilm, isFilm ? button : QString(),
                           find<QTimer>(kFilm, QStringLiteral("cine")).isActive()),
                      line(QStringLiteral("walk"),
                           find<QTimer>(kBrowser, QStringLiteral("TimerScan")).isActive()),
                      line(QStringLiteral("timer"), isPassing_ || engine_->timer().isActive(),
                           engine_->timer().interval())};
    if (isBrowser_ && !isAway_) {
        lines += seenBrowser();
    }
    lines.append(line(QStringLiteral("stored"), text(kBrowser, QStringLiteral("NbCapt")).toInt(),
                      stored_ > 0 ? text(kBrowser, QStringLiteral("Capt")) : QString()));
    lines += seenTools();
    return isMain_ ? lines + seenMain() : lines;
}

QStringList ProgramChecks::meant()
{
    using Film = ModesRule::Film;
    const QString button = browser_.film == Film::Closed   ? QString()
                           : browser_.film == Film::Paused ? QStringLiteral("Start")
                                                           : QStringLiteral("Pause");
    QStringList lines{line(QStringLiteral("windows"), isMain_, isBrowser_),
                      line(QStringLiteral("film"), browser_.film != Film::Closed, button,
                           browser_.film == Film::Playing && !isAway_ && !isStorageInHand()),
                      line(QStringLiteral("walk"),
                           isBrowser_ && browser_.isScan && !isAway_ && !isStorageInHand()),
                      line(QStringLiteral("timer"), isPassing_ || (!isAway_ && !isStorageInHand()),
                           tick_ * 1000)};
    if (isBrowser_ && !isAway_) {
        lines += meantBrowser();
    }
    lines.append(line(QStringLiteral("stored"), stored_, stored_ > 0 ? placeOf(last_) : QString()));
    lines += meantTools();
    return isMain_ ? lines + meantMain() : lines;
}

// While a film is open; a camera without a name is not named.
QString ProgramChecks::filmTitle()
{
    return isVisible(kFilm) ? topLevel(kFilm)->windowTitle() : QString();
}

QString ProgramChecks::meantFilmTitle()
{
    const CameraAddress camera = browser_.listed();
    const QString name =
        nameOf(camera).isEmpty() ? QString() : QStringLiteral(" - ") + shownCamera(camera);
    return browser_.film == ModesRule::Film::Closed ? QString() : QStringLiteral("Film") + name;
}

QStringList ProgramChecks::seenBrowser()
{
    const QString of = browser_.isGroup ? kListRows : kListImages;
    const auto box = [this](const QString &name) -> QLineEdit & {
        return find<QLineEdit>(kBrowser, name);
    };
    const auto mode = [this](const QString &name) {
        return find<QCheckBox>(kBrowser, name).isChecked();
    };
    QStringList lines{
        line(QStringLiteral("camera"), rowOf(kListGroups), rowOf(kListCameras),
             known(text(kBrowser, QStringLiteral("lCamera")), browser_.camera)),
        line(QStringLiteral("view"), list(kListImages).isVisible(), list(kListRows).isVisible()),
        line(QStringLiteral("rows"), rowsOf(list(of))),
        line(QStringLiteral("selected"), rowOf(of), framed()),
        line(QStringLiteral("NbI"), text(kBrowser, QStringLiteral("NbI"))),
        line(QStringLiteral("bFilm"), find(kBrowser, QStringLiteral("bFilm")).isEnabled()),
        line(QStringLiteral("lDate"), box(QStringLiteral("lDate")).text(),
             box(QStringLiteral("lDate")).isEnabled()),
        line(QStringLiteral("lTime"), box(QStringLiteral("lTime")).text(),
             box(QStringLiteral("lTime")).isEnabled()),
        line(QStringLiteral("modes"), mode(QStringLiteral("cAuto")),
             mode(QStringLiteral("cCamera")), mode(QStringLiteral("cScan")))};
    for (int row = 0; row < kRows; ++row) {
        const QModelIndex index = list(kListCameras).model()->index(row, 0);
        const QString tip = index.data(Qt::ToolTipRole).toString().section(u'\n', 0, 0);
        lines.append(
            known(tip.startsWith(u"late") ? QString() : tip, {browser_.camera.group, row}));
    }
    for (int cell = 0; cell < kRows; ++cell) {
        lines.append(picture(QStringLiteral("Vue%1").arg(cell), browser_.cells().at(cell)));
    }
    lines.append(picture(QStringLiteral("ZoomImage"), browser_.zoomed));
    return lines;
}

QStringList ProgramChecks::meantBrowser()
{
    const QList<int> frames = browser_.frame() < 0 ? QList<int>() : QList<int>{browser_.frame()};
    QStringList lines{
        line(QStringLiteral("camera"), browser_.camera.group, browser_.camera.row,
             shownCamera(browser_.camera)),
        line(QStringLiteral("view"), !browser_.isGroup, browser_.isGroup),
        line(QStringLiteral("rows"), browser_.isGroup ? rowsOfGroup(browser_) : browser_.list),
        line(QStringLiteral("selected"), browser_.isGroup ? browser_.row : browser_.index, frames),
        line(QStringLiteral("NbI"), browser_.position),
        line(QStringLiteral("bFilm"), browser_.isFilmEnabled),
        line(QStringLiteral("lDate"), browser_.date, !browser_.isGroup),
        line(QStringLiteral("lTime"), browser_.time, !browser_.isGroup),
        line(QStringLiteral("modes"), browser_.isAuto, browser_.isGroup, browser_.isScan)};
    for (int row = 0; row < kRows; ++row) {
        lines.append(shownCamera({browser_.camera.group, row}));
    }
    for (int cell = 0; cell < kRows; ++cell) {
        lines.append(QStringLiteral("Vue%1 ").arg(cell) + browser_.cells().at(cell));
    }
    lines.append(QStringLiteral("ZoomImage ") + browser_.zoomed);
    return lines;
}

// An address that was changed by hand is shown once the program has heard of it, or has looked.
QString ProgramChecks::known(const QString &text, CameraAddress camera)
{
    const QString there = text == u"no camera" ? QString() : text;
    const QStringList known = QStringList{heard_[camera]} + unheard_[camera];
    const auto is = [&](const QString &url) { return there == shownCamera(camera, url); };
    return std::ranges::any_of(known, is) ? shownCamera(camera) : there;
}

// One that has vanished may still be on show.
QString ProgramChecks::picture(const QString &name, const QString &path)
{
    const QString there = QDir::cleanPath(find(kBrowser, name).accessibleDescription());
    return name + u' ' + (there.isEmpty() && gone_.contains(path) ? path : there);
}

QStringList ProgramChecks::rowsOf(QListView &of)
{
    QStringList rows;
    for (int row = 0; row < of.model()->rowCount(); ++row) {
        rows.append(of.model()->index(row, 0).data().toString());
    }
    return rows;
}

QList<int> ProgramChecks::framed()
{
    QList<int> cells;
    for (int cell = 0; cell < kRows; ++cell) {
        if (find(kBrowser, QStringLiteral("Cadre%1").arg(cell)).property("BorderStyle") == 1) {
            cells.append(cell);
        }
    }
    return cells;
}

// Who is late is the same in both windows.
void ProgramChecks::checkLate()
{
    for (int row = 0; row < kRows && isMain_ && rowOf(kListGroups) == rows_.group; ++row) {
        const QModelIndex index = list(kListCameras).model()->index(row, 0);
        const bool isLate =
            index.data(Qt::ToolTipRole).toString().contains(QStringLiteral("late: "));
        EXPECT_EQ(!find(kMain, rowKey(u"n", row)).accessibleDescription().isEmpty(), isLate) << row;
    }
}

QStringList ProgramChecks::seenTools()
{
    const auto choice = [this](const QString &name) {
        return find<QComboBox>(kImport, name).currentIndex();
    };
    QStringList lines;
    for (const QString &window : {kSheet, kHealth, kImport, kAlarm, kKeep, kCalendar}) {
        lines.append(line(window, isVisible(window)));
    }
    if (isOpen(kSheet)) {
        lines.append(line(QStringLiteral("sheet"),
                          find<QLineEdit>(kSheet, QStringLiteral("sheetName")).text(),
                          find<QLineEdit>(kSheet, QStringLiteral("sheetAddress")).text()));
    }
    if (isOpen(kKeep)) {
        lines.append(topLevel(kKeep)->windowTitle().section(u':', 1).trimmed());
    }
    if (isOpen(kImport)) {
        lines.append(line(QStringLiteral("import"), choice(QStringLiteral("Cam")),
                          choice(QStringLiteral("Lien"))));
    }
    if (browser_.isCalendarOpen && !isAway_) {
        lines.append(text(kCalendar, QStringLiteral("calendarDay")));
    }
    return lines;
}

QStringList ProgramChecks::meantTools()
{
    QStringList lines;
    for (const QString &window : {kSheet, kHealth, kImport, kAlarm, kKeep}) {
        lines.append(line(window, isOpen(window)));
    }
    lines.append(line(kCalendar, browser_.isCalendarOpen));
    if (isOpen(kSheet)) {
        lines.append(line(QStringLiteral("sheet"), inSheet_.name, inSheet_.url));
    }
    if (isOpen(kKeep)) {
        lines.append(kept_.trimmed());
    }
    if (isOpen(kImport)) {
        lines.append(line(QStringLiteral("import"), control_[QStringLiteral("ICam")].toInt(),
                          control_[QStringLiteral("ILien")].toInt()));
    }
    if (browser_.isCalendarOpen && !isAway_) {
        lines.append(dayText());
    }
    return lines;
}

QString ProgramChecks::dayText()
{
    if (browser_.chosenDay.isEmpty()) {
        return {};
    }
    const auto isOfDay = [this](const QString &name) {
        return name.startsWith(browser_.chosenDay);
    };
    const QStringList known = browser_.known();
    const QDate day = QDate::fromString(browser_.chosenDay, QStringLiteral("yyyyMMdd"));
    return QLocale().toString(day, QLocale::LongFormat) + QStringLiteral(": ") +
           imagesText(std::ranges::count_if(known, isOfDay));
}

QStringList ProgramChecks::seenMain()
{
    const auto edit = [this](const QString &name) { return find<QLineEdit>(kMain, name).text(); };
    const auto isOn = [this](const QString &name) {
        return find<QCheckBox>(kMain, name).isChecked();
    };
    QStringList lines{
        line(QStringLiteral("tab"), tabs().currentIndex(), isOn(QStringLiteral("ActLst"))),
        line(QStringLiteral("options"), edit(QStringLiteral("StRep")),
             edit(QStringLiteral("tempo")), edit(QStringLiteral("TIO")),
             isOn(QStringLiteral("cDebug"))),
        line(QStringLiteral("storage"),
             find<Lamp>(kMain, QStringLiteral("LampSA")).property("FillColor").toInt(),
             find(kMain, QStringLiteral("Import")).isEnabled(),
             find(kMain, QStringLiteral("MakeDir")).isVisible(),
             find<QAbstractButton>(kMain, QStringLiteral("Cache")).text())};
    for (int row = 0; row < kRows; ++row) {
        lines.append(line(QStringLiteral("row"), row, box(row).text(),
                          isOn(rowKey(u"AutoDelay", row)), isOn(rowKey(u"EffM", row)),
                          text(kMain, rowKey(u"BestTime", row)), text(kMain, rowKey(u"lNew", row)),
                          lampOf(row)));
    }
    return lines;
}

QStringList ProgramChecks::meantMain()
{
    QStringList lines{line(QStringLiteral("tab"), rows_.group, rows_.groupOn),
                      line(QStringLiteral("options"), control_[QStringLiteral("StRep")],
                           control_[QStringLiteral("Tempo")], control_[QStringLiteral("TIO")],
                           control_[QStringLiteral("Debug")] == QStringLiteral("1")),
                      line(QStringLiteral("storage"), isAway_ ? 255 : 65280,
                           !isAway_ && !isStorageInHand(), isAway_,
                           isAway_ ? QStringLiteral("Quitter") : QStringLiteral("Ok"))};
    for (int row = 0; row < kRows; ++row) {
        const ShownRow &shown = rows_.shown(row);
        lines.append(line(QStringLiteral("row"), row, shown.box, shown.automatic, shown.deletes,
                          shown.bestTime, QString::number(shown.newImages),
                          QString::number(shown.lamp)));
    }
    return lines;
}

// Orange while the live view fetches. The end of a fetch for an address that the row has no more
// shows what is stored for the one that it has.
QString ProgramChecks::lampOf(int row)
{
    const int lamp = find<Lamp>(kMain, rowKey(u"SB", row)).property("FillColor").toInt();
    const bool isFetched = lamp == kOrange && engine_->scope().running() > endless_;
    const bool isRight = isFetched || isPassing_ || lamp == rows_.storedLamp(row);
    return QString::number(isRight ? rows_.shown(row).lamp : lamp);
}

// As another program would read it.
QMap<QString, QString> ProgramChecks::file()
{
    static const QStringList kLeftOut{QStringLiteral("Planche.Top"), QStringLiteral("Planche.Left"),
                                      QStringLiteral("fCine.Top"),   QStringLiteral("fCine.left"),
                                      QStringLiteral("Digest"),      QStringLiteral("Look")};
    QMap<QString, QString> values;
    QString section;
    for (const QByteArray &bytes : tree_.read(u"Velmora.ini").split('\n')) {
        const QString text = fromAnsi(bytes.trimmed());
        if (text.startsWith(u'[')) {
            section = text.mid(1).chopped(1);
        } else if (!text.startsWith(u';') && !kLeftOut.contains(text.section(u'=', 0, 0))) {
            values.insert(section + u' ' + text.section(u'=', 0, 0), text.section(u'=', 1));
        }
    }
    values.removeIf([](const auto &value) { return value->isEmpty(); });
    return values;
}

void ProgramChecks::checkFile()
{
    const QMap<QString, QString> stored = file();
    const QMap<QString, QString> wanted = wantedFile();
    EXPECT_TRUE(tree_.read(u"Velmora.ini").startsWith("; mine\r\n"));
    for (const QString &key : stored == wanted ? QStringList() : stored.keys() + wanted.keys()) {
        EXPECT_EQ(stored[key].toStdString(), wanted[key].toStdString()) << key.toStdString();
    }
}

void ProgramChecks::checkImages()
{
    std::map<QString, QByteArray> there;
    QDirIterator found(tree_.path(u"drives"), QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (found.hasNext()) {
        const QString path = QDir::cleanPath(found.next());
        QFile file(path);
        if (!path.endsWith(QStringLiteral("/tmp/Target.jpg")) && file.open(QIODevice::ReadOnly)) {
            there[QString(path).remove(QStringLiteral(".away"))] = file.readAll();
        }
    }
    if (there == files_) {
        return;
    }
    for (const auto &[path, bytes] : there) {
        EXPECT_TRUE(files_.contains(path) && files_[path] == bytes) << path.toStdString();
    }
    for (const auto &[path, bytes] : files_) {
        EXPECT_TRUE(there.contains(path)) << path.toStdString() << " is gone";
    }
}

} // namespace velmora::test
