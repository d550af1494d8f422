#include "ProgramWorld.h"

#include "cameras/CameraTable.h"
#include "support/StoredPictures.h"

#include <QAbstractButton>
#include <QDir>
#include <QTimer>

namespace velmora::test {

using namespace std::chrono_literals;

namespace {

constexpr auto kLongerThanAnswers = 30s;
constexpr auto kLongerThanTwoPasses = 120s;
constexpr int kTurnsOfStart = 20;
const QString kOn = QStringLiteral("1");
const QString kOff = QStringLiteral("0");

bool isOldName(const QString &path)
{
    return QFileInfo(path).fileName().indexOf(u'.') == 15;
}

// "Section key" and its value, as lines of a settings file.
QByteArray settingsText(const QMap<QString, QString> &values)
{
    QString text;
    QString section;
    for (const auto &[key, value] : values.asKeyValueRange()) {
        if (section != std::exchange(section, key.section(u' ', 0, 0))) {
            text += QStringLiteral("[%1]\r\n").arg(section);
        }
        text += QStringLiteral("%1=%2\r\n").arg(key.section(u' ', 1), value);
    }
    return text.toLatin1();
}

} // namespace

void ProgramWorld::begin(int sequence)
{
    endProgram();
    random_.seed(static_cast<quint32>(sequence));
    clock_.setLocal(kFakeStart);
    clearFolder();
    writeFirstSettings();
    fillFolders();
    startAgain();
}

void ProgramWorld::clearFolder()
{
    QDir(tree_.path(u"drives")).removeRecursively();
    for (const QString &file : tree_.files()) {
        QFile::remove(tree_.path(file));
    }
    for (const QString &folder :
         {QStringLiteral("in"), QStringLiteral("other"), QStringLiteral("card")}) {
        tree_.makeFolder(QString(QStringLiteral("drives/c/") + folder));
    }
    isAway_ = false;
    files_.clear();
    gone_.clear();
    answers_ = 0;
}

void ProgramWorld::writeFirstSettings()
{
    rows_ = {};
    control_ = {{QStringLiteral("StRep"), kStorages.at(0)},
                {QStringLiteral("Tempo"), QStringLiteral("60")},
                {QStringLiteral("TIO"), QStringLiteral("5")},
                {QStringLiteral("Debug"), QStringLiteral("0")},
                {QStringLiteral("Vitesse"), QStringLiteral("1000")},
                {QStringLiteral("Dir"), QStringLiteral("C:\\card")},
                {QStringLiteral("Drive"), QStringLiteral("C:")},
                {QStringLiteral("ICam"), QStringLiteral("0")},
                {QStringLiteral("ILien"), QStringLiteral("0")}};
    browser_ = ModesRule(root());
    browser_.storedGroup = below(3);
    browser_.storedRow = below(kRows);
    browser_.isAuto = oneIn(2);
    browser_.isGroup = oneIn(2);
    browser_.isScan = oneIn(4);
    for (const CameraAddress camera : kUsed) {
        const QString url = oneIn(4) ? QString() : anyUrl();
        rows_.at(camera).url = url;
        storeAddress(camera);
    }
    for (int group = 0; group < kGroups; ++group) {
        const bool isOn = group < 3 && !oneIn(3);
        rows_.active.at(static_cast<std::size_t>(group)) = isOn ? kOn : kOff;
        browser_.isActive.at(static_cast<std::size_t>(group)) = isOn;
    }
    tree_.write(u"Velmora.ini", "; mine\r\n" + settingsText(wantedFile()));
}

void ProgramWorld::fillFolders()
{
    for (const CameraAddress camera : kUsed) {
        for (int images = below(2) * below(14); images > 0; --images) {
            writeImage(nativeFolder(camera) + u'/' + anyName());
        }
    }
}

// All that a user has stored, and the capture, by section and key.
QMap<QString, QString> ProgramWorld::wantedFile()
{
    QMap<QString, QString> values = rows_.file();
    for (const auto &[key, value] : control_.asKeyValueRange()) {
        values.insert(QStringLiteral("Control ") + key, value);
    }
    const auto number = [&values](const char *key, int value) {
        values.insert(QStringLiteral("Control ") + QLatin1String(key), QString::number(value));
    };
    number("Auto", browser_.isAuto ? 1 : 0);
    number("Camera", browser_.isGroup ? 1 : 0);
    number("Scan", browser_.isScan ? 1 : 0);
    number("lstP", browser_.storedGroup);
    number("lstImg", browser_.storedRow);
    return values;
}

void ProgramWorld::startAgain()
{
    ended_ = false;
    stored_ = 0;
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), busy_, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    desk_ = std::make_unique<ProgramDesk>(tree_.path(), engine_->table(), engine_->store());
    QObject::connect(desk_.get(), &ProgramDesk::settingsChanged, engine_.get(),
                     &CaptureEngine::adoptSettings);
    desk_->open();
    followCapture();
    scriptAnswers();
    browser_.restart(now());
    isMain_ = isAway_;
    isBrowser_ = true;
    wasInFront_ = false;
    for (const CameraAddress camera : kAllCameras) {
        heard_[camera] = rows_.at(camera).url;
        unheard_[camera].clear();
    }
    if (isMain_) {
        rows_.load(rows_.group);
    }
    program_->start();
    for (int turn = 0; turn < kTurnsOfStart; ++turn) {
        clock_.advance(0ms);
        holdTimers();
    }
    topLevel(QStringLiteral("frmSplash"))->close();
    clock_.advance(kLongerThanAnswers);
    rest();
    endless_ = engine_->scope().running();
    takeTick();
}

void ProgramWorld::endProgram()
{
    if (!program_) {
        return;
    }
    if (!ended_) {
        leaveRow();
        scriptAnswers();
        ended_ = true;
        quit();
        isMain_ = false;
        isBrowser_ = false;
        open_.clear();
    }
    clock_.advance(kLongerThanTwoPasses);
    EXPECT_EQ(engine_->scope().running(), 0) << "after the end";
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        EXPECT_FALSE(widget->isVisible()) << widget->objectName().toStdString();
    }
    desk_.reset();
    program_.reset();
    engine_.reset();
}

// As a user does in the window that is the program's last, or as a signal does.
void ProgramWorld::quit()
{
    if (QApplication::activeModalWidget() != nullptr || oneIn(3)) {
        program_->end();
    } else if (isMain_ && isAway_) {
        clickOn(kMain, QStringLiteral("Cache"));
    } else if (isMain_) {
        topLevel(kMain)->close();
    } else {
        clickOn(kBrowser, QStringLiteral("Quitter"));
    }
}

// As the capture says it; the dates are those of the answers.
void ProgramWorld::followCapture()
{
    ImageStore &store = engine_->store();
    const auto connect = [&](auto signal, auto slot) {
        QObject::connect(&store, signal, program_.get(), slot);
    };
    QObject::connect(&engine_->scheduler(), &Scheduler::passEnded, program_.get(),
                     [this] { takeTick(); });
    QObject::connect(&engine_->conformity(), &Conformity::ended, program_.get(),
                     [this] { settleNames(); });
    connect(&ImageStore::loadBegan, [this](CameraAddress camera) {
        EXPECT_EQ(rows_.active.at(static_cast<std::size_t>(camera.group)).toStdString(), "1");
        EXPECT_FALSE(rows_.at(camera).url.isEmpty());
    });
    connect(&ImageStore::downloaded,
            [this](CameraAddress camera, int seconds) { rows_.showLoadSeconds(camera, seconds); });
    connect(&ImageStore::cameraAnswered, [this](CameraAddress camera) {
        takeTimes(camera);
        rows_.answer(camera, value(camera, u"LastModified"));
    });
    connect(&ImageStore::cameraFailed, [this](CameraAddress camera) {
        takeTimes(camera);
        rows_.fail(camera);
    });
    connect(&ImageStore::imageStored, [this](CameraAddress camera, const QString &name) {
        rows_.countImage(camera);
        takeStored(camera, name);
    });
}

QCoro::Task<> ProgramWorld::runPass()
{
    isPassing_ = true;
    if (!isAway_ && !isStorageInHand()) {
        takeTick();
    }
    co_await engine_->scheduler().Timer_Timer();
    isPassing_ = false;
}

void ProgramWorld::takeTimes(CameraAddress camera)
{
    for (const QString &word : {QStringLiteral("TimeLoad"), QStringLiteral("LocalTime")}) {
        rows_.at(camera).row[word] = value(camera, word);
    }
}

// Nothing is stored but what was answered to the address that the row has, in the folder in force.
void ProgramWorld::takeStored(CameraAddress camera, const QString &name)
{
    const QString path = nativeFolder(camera) + u'/' + name;
    const QByteArray &bytes = answered_[rows_.at(camera).url];
    EXPECT_FALSE(files_.contains(path)) << path.toStdString();
    EXPECT_FALSE(bytes.isEmpty()) << path.toStdString();
    files_[path] = bytes;
    ++stored_;
    last_ = camera;
    EXPECT_TRUE(!isAway_);
    if (!ended_) {
        browser_.stored(camera, name);
    }
}

QString ProgramWorld::value(CameraAddress camera, QStringView word) const
{
    return engine_->settings().read(QStringLiteral("Groupe%1").arg(camera.group),
                                    rowKey(word, camera.row));
}

QString ProgramWorld::shownCamera(CameraAddress camera, const QString &url)
{
    const QString title =
        QStringLiteral("%1:%2 %3").arg(camera.group).arg(camera.row).arg(nameOf(camera));
    return nameOf(camera).isEmpty() ? url.mid(QStringLiteral("http://").size()) : title;
}

// Good and new, good and old, too short, too late or none. The later an address stands in the list,
// the later it answers.
void ProgramWorld::scriptAnswers()
{
    if (isPassing_) { // they are still asked
        return;
    }
    std::chrono::milliseconds delay{0};
    for (const QString &url : kUrls) {
        answers_ += below(3);
        const QDateTime date =
            QDateTime(QDate(2006, 3, 7), QTime(0, 0), Qt::UTC).addSecs(10 * answers_);
        const QString when =
            QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss"));
        const QByteArray bytes =
            picture().leftJustified(oneIn(6) ? 600 : 2000) + QByteArray::number(answers_);
        delay += 300ms;
        const bool isLate = oneIn(10);
        const QString failure = oneIn(8) ? QStringLiteral("gone") : QString();
        source_.answer(
            url, {bytes, when + QStringLiteral(" GMT"), {}, delay + (isLate ? 60s : 0s), failure});
        answered_[url] = failure.isEmpty() && !isLate ? bytes : QByteArray();
    }
}

const QByteArray &ProgramWorld::picture()
{
    static const QByteArray bytes = pictureBytes(Qt::red, {16, 12});
    return bytes;
}

void ProgramWorld::clickOn(const QString &window, const QString &name)
{
    auto &control = find(window, name);
    const bool isBox = qobject_cast<QCheckBox *>(&control) != nullptr;
    const QPoint at = isBox ? QPoint(8, control.height() / 2) : control.rect().center();
    QTest::mouseClick(&control, Qt::LeftButton, {}, at);
}

void ProgramWorld::clickRow(QListView &list, int row)
{
    const QModelIndex index = list.model()->index(row, 0);
    list.scrollTo(index);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(index).center());
}

void ProgramWorld::toFront(const QString &window)
{
    QWidget *const wanted = topLevel(window);
    wanted->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([wanted] { return QApplication::activeWindow() == wanted; }));
}

void ProgramWorld::rest()
{
    const int turns = isPassing_ ? 5 : 2000;
    for (int turn = 0; turn < turns; ++turn) {
        clock_.advance(0ms);
        QCoreApplication::processEvents();
        if (engine_->scope().running() <= endless_) {
            break;
        }
    }
    clock_.advance(0ms);
    holdTimers();
}

// In camera view alone, and for a camera: then those of all cameras are brought up to date.
bool ProgramWorld::showsOldName()
{
    const bool isLooked = !browser_.isGroup && !isAway_ && !isStorageInHand() &&
                          !rows_.at(browser_.camera).url.isEmpty();
    return isLooked && std::ranges::any_of(browser_.cells(), isOldName);
}

// Their files were last written on the seventh, at two in the afternoon.
void ProgramWorld::settleNames()
{
    bool isAny = false;
    for (const auto &[path, bytes] : std::map(files_)) {
        const QString current = path.chopped(4) + QStringLiteral("0714.jpg");
        if (isOldName(path) && !QFile::exists(path) && QFile::exists(current)) {
            files_[current] = bytes;
            files_.erase(path);
            gone_.insert(path);
            isAny = true;
        }
    }
    if (isAny && !browser_.isGroup) {
        browser_.relist();
    }
}

bool ProgramWorld::isStorageInHand()
{
    QWidget *const main = topLevel(kMain);
    return isMain_ && QApplication::activeWindow() == main &&
           main->focusWidget() == &find(kMain, QStringLiteral("StRep"));
}

void ProgramWorld::holdTimers()
{
    for (const QString &window : {kMain, kBrowser, kFilm}) {
        if (topLevel(window) == nullptr) {
            continue;
        }
        for (QTimer *const timer : topLevel(window)->findChildren<QTimer *>()) {
            const bool isHeld = timer->objectName() == u"Timer" ||
                                timer->objectName() == u"TimerScan" ||
                                timer->objectName() == u"cine";
            if (isHeld && timer->isActive() && timer->interval() > 0) {
                timer->start(); // from the beginning
            }
        }
    }
}

void ProgramWorld::fire(const QString &window, const QString &timer)
{
    ASSERT_TRUE(
        QMetaObject::invokeMethod(&find<QTimer>(window, timer), "timeout", Qt::DirectConnection));
}

void ProgramWorld::leaveRow()
{
    const int row = rows_.hand;
    rows_.leave();
    if (row >= 0) {
        hearAddress({rows_.group, row});
    }
}

QDateTime ProgramWorld::now() const
{
    return QDateTime::fromSecsSinceEpoch(
        std::chrono::floor<std::chrono::seconds>(clock_.localNow()).time_since_epoch().count(),
        Qt::UTC);
}

QString ProgramWorld::root() const
{
    const QString folder = control_[QStringLiteral("StRep")].mid(3).chopped(1);
    return QDir::cleanPath(tree_.path(u"drives/c")) + u'/' + folder;
}

void ProgramWorld::writeImage(const QString &path)
{
    if (!QFile::exists(path)) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(picture());
        files_[path] = picture();
        gone_.erase(path);
    }
}

void ProgramWorld::writeOldName()
{
    const QString path =
        nativeFolder(anyCamera()) + u'/' + anyName().left(15) + QStringLiteral(".jpg");
    const QString current = path.chopped(4) + QStringLiteral("0714.jpg");
    if (path.startsWith(root() + QStringLiteral("/2")) || isAway_ || QFile::exists(current) ||
        QFile::exists(path)) {
        return;
    }
    writeImage(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2006, 3, 7), QTime(14, 30), Qt::UTC),
                                 QFileDevice::FileModificationTime));
}

QString ProgramWorld::anyName()
{
    return QStringLiteral("%1_%2%3%4")
        .arg(pick(kDays))
        .arg(below(24), 2, 10, QLatin1Char('0'))
        .arg(below(6) * 1000 + below(6) * 10, 4, 10, QLatin1Char('0'))
        .arg(QStringLiteral("0714.jpg"));
}

void ProgramWorld::storeAddress(CameraAddress of)
{
    browser_.giveAddress(of, rows_.at(of).url);
}

void ProgramWorld::hearAddress(CameraAddress of)
{
    storeAddress(of);
    unheard_[of].clear();
    const QString &url = rows_.at(of).url;
    if (std::exchange(heard_[of], url) != url && !isAway_ && !ended_) {
        browser_.hearAddress(of);
    }
}

} // namespace velmora::test
