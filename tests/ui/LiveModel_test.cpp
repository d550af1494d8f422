// Random sequences of what a user can do around the live view while commands, captures, another
// storage folder and late pictures come in between, each followed by a check of what the window
// shows against what the rules of the live view make of them.
#include "LiveHands.h"
#include "admin/CameraCommands.h"
#include "support/Sequences.h"

#include <utility>
#include <vector>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr int kSequences = 10;
constexpr int kEvents = 60;

class LiveModel : public LiveHands
{
protected:
    using Kind = EventKind<LiveModel>;

    LiveModel()
    {
        house_.log.setOn(false);
        const auto touch = [this](CameraAddress camera) {
            touched_ = touched_ || (live_.camera() && live_.camera()->camera == camera);
        };
        QObject::connect(&house_.scheduler, &Scheduler::cameraLoading, &another_,
                         [this, touch](CameraAddress camera) {
                             current_ = camera.group == group() ? camera.row : current_;
                             touch(camera);
                         });
        QObject::connect(&house_.scheduler, &Scheduler::lampChanged, &another_, touch);
        QObject::connect(&house_.store, &ImageStore::lampChanged, &another_, touch);
        QObject::connect(&house_.store, &ImageStore::downloaded, &another_,
                         [this] { hasDownloaded_ = true; });
    }

    LiveScript script(const QString &url) override
    {
        QString address = url.trimmed();
        address.remove(QStringLiteral("http://")); // wherever it stands
        const QString scheme =
            address.startsWith(u"rtsp://") ? QString() : QStringLiteral("http://");
        return scripts_.value(
            scheme + address,
            {LiveAnswer::None, {{}, {}, {}, {}, QStringLiteral("no such camera")}});
    }

    // Around the window.
    void answerAnew()
    {
        static const QList<QByteArray> pictures{
            pictureBytes(Qt::red, {640, 480}), pictureBytes(Qt::green, {640, 480}),
            pictureBytes(Qt::blue, {640, 480}), pictureBytes(Qt::yellow, {640, 480}, "PNG")};
        const QString url = anyUrl();
        const QString date =
            QStringLiteral("Tue, 07 Mar 2006 14:%1:%2 GMT").arg(10 + below(49)).arg(10 + below(49));
        LiveScript script{LiveAnswer::Picture, {pictures.at(below(4)), date, {}, {}, {}}};
        const int kind = below(8);
        if (kind == 0) {
            script = {LiveAnswer::None, {{}, {}, {}, {}, QStringLiteral("gone")}};
        } else if (kind == 1) {
            script = {LiveAnswer::NoPicture,
                      {QByteArray(2000, 'x'), {}, QStringLiteral("text/html; a"), {}, {}}};
        } else if (kind == 2) {
            script = {LiveAnswer::Damaged,
                      {pictures.at(0).first(20) + QByteArray(2000, 'x'), {}, {}, {}, {}}};
        }
        script.reply.delay = oneIn(3) ? 0ms : below(7) * 1000ms;
        answer(url, script);
    }

    void answer(const QString &url, const LiveScript &script)
    {
        scripts_.insert(url, script);
        rooms_.source.answer(url == u"http://c" ? QStringLiteral("http://c/") : url, script.reply);
    }

    void add()
    {
        const CameraAddress camera = anyCamera();
        if (addCamera(outside_, {anyUrl(), camera, {}, {}}).status == kDone) {
            house_.engine.adoptSettings();
            live_.replace(camera);
        }
    }

    void remove()
    {
        const CameraAddress camera = anyCamera();
        const bool isThere = !house_.table.url(camera).isEmpty();
        static_cast<void>(removeCamera(outside_, {camera}));
        house_.engine.adoptSettings();
        if (isThere) {
            live_.replace(camera);
        }
    }

    void hear() { house_.engine.adoptSettings(); }

    void tick()
    {
        house_.scheduler.setTickCounter(59);
        house_.scope.launch(house_.scheduler.Timer_Timer());
    }

    void passTime() { rooms_.clock.advance(below(4) * 1000ms); }

    void storeImage()
    {
        const CameraAddress camera = anyCamera();
        if (const QString folder = house_.storage.cameraFolder(camera); !folder.isEmpty()) {
            QDir().mkpath(folder);
            QFile file(folder + u'/' + storedName(below(9999)));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(pictureBytes(Qt::cyan));
        }
    }

    // One that was there may be made anew meanwhile, when the user has named it.
    void turnTheDisk()
    {
        const QString there = house_.tree.path(u"drives/c/in");
        const QString away = house_.tree.path(u"drives/c/away");
        if (QFileInfo::exists(away)) {
            QDir(there).removeRecursively();
            QDir().rename(away, there);
        } else {
            QDir().rename(there, away);
        }
        house_.storage.recheck();
    }

    void work()
    {
        live_.status = QStringLiteral("meanwhile");
        rooms_.window.showWork(live_.status);
    }

    QString targetFile() { return house_.storage.workFolder() + QStringLiteral("/Target.jpg"); }

    QString message() { return rooms_.find<QLabel>(QStringLiteral("lMessage")).text(); }

    // The file is that of the storage folder in which it was written.
    void clickWeb()
    {
        closeZoom();
        if (!mayUseMain()) {
            return;
        }
        rooms_.click(QStringLiteral("iWeb"));
        const bool isThere = live_.isFile && QFileInfo::exists(webPath_);
        EXPECT_EQ(enlarged(), isThere ? webPath_ : QString());
    }

    void clickForeign()
    {
        closeZoom();
        if (!live_.isFile || !QFile::exists(webPath_) || !mayUseMain()) {
            return;
        }
        QFile::remove(webPath_);
        rooms_.click(QStringLiteral("iWeb"));
        EXPECT_FALSE(zoom_.isVisible());
        EXPECT_TRUE(message().endsWith(u"another program has replaced or deleted its file"));
        QFile file(webPath_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        live_.isFile = false;
    }

    // After the event.
    void follow()
    {
        const bool isEdited = house_.storage.isBeingEdited();
        const bool isOther = std::exchange(version_, house_.storage.version()) != version_;
        if (isEdited || isOther) {
            live_.interrupt();
        }
        if (!isEdited) {
            live_.goOn();
        }
        if (isOther && hasDownloaded_) { // and may have stored it before or after the look there
            live_.target = picture(QStringLiteral("iTarget")).path();
        }
        followFocus();
        if (const std::optional<int> seconds = live_.follow()) {
            checkEnd(*seconds);
        }
    }

    void checkEnd(int seconds)
    {
        webPath_ = targetFile();
        EXPECT_EQ(QFileInfo::exists(webPath_), live_.isFile);
        if (live_.isFile) {
            QFile file(webPath_);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            EXPECT_TRUE(file.readAll() == live_.file);
            EXPECT_FALSE(message().contains(u"live picture")) << message().toStdString();
        }
        if (!hasDownloaded_) {
            EXPECT_EQ(text(QStringLiteral("TimeLoad%1").arg(live_.camera()->camera.row)),
                      QString::number(seconds));
        }
    }

    QString text(const QString &label) { return rooms_.find<QLabel>(label).text(); }

    void checkPictures()
    {
        PictureView &target = picture(QStringLiteral("iTarget"));
        PictureView &web = picture(QStringLiteral("iWeb"));
        EXPECT_EQ(target.path(), live_.target);
        EXPECT_EQ(text(QStringLiteral("Locale")), live_.local);
        EXPECT_EQ(text(QStringLiteral("lWeb")), live_.web);
        EXPECT_EQ(text(QStringLiteral("lTmp")), live_.status);
        EXPECT_EQ(web.holdsPicture(), !live_.picture.isEmpty());
        if (!live_.picture.isEmpty()) {
            const QImage seen = web.grab().toImage();
            const QColor middle = seen.pixelColor(seen.rect().center());
            const QColor meant = QImage::fromData(live_.picture).pixelColor(9, 9);
            EXPECT_NEAR(middle.red(), meant.red(), 8);
            EXPECT_NEAR(middle.green(), meant.green(), 8);
            EXPECT_NEAR(middle.blue(), meant.blue(), 8);
        }
    }

    void checkReason()
    {
        const QString shown = text(QStringLiteral("lReason"));
        const CameraAddress camera{group(), taken_.value_or(0)};
        const bool isMeant = taken_ && live_.camera() && live_.camera()->camera == camera;
        if (isMeant && !live_.reason.isEmpty()) {
            EXPECT_EQ(
                shown,
                QStringLiteral("Camera %1:%2, live picture: ").arg(camera.group).arg(camera.row) +
                    live_.reason);
        } else {
            EXPECT_FALSE(shown.contains(u"live picture")) << shown.toStdString();
        }
    }

    void checkLamps()
    {
        constexpr int kOrange = 33023;
        const bool isQuiet = house_.scope.running() == 0;
        for (int row = 0; row < kUsedRows; ++row) {
            const CameraAddress camera{group(), row};
            const int lamp =
                rooms_.find<Lamp>(QStringLiteral("SB%1").arg(row)).property("FillColor").toInt();
            const bool isLive = live_.isFetching() && live_.camera()->camera == camera;
            const bool isEmptied = !began_.isEmpty() && storedUrl(row).isEmpty();
            if (isLive && !touched_ && !isEmptied) {
                EXPECT_EQ(lamp, kOrange) << row;
            } else if (isQuiet && !house_.table.url(camera).isEmpty() && !typed_.contains(row)) {
                EXPECT_EQ(lamp, house_.value(u"SB", camera).toInt()) << row;
            } else if (isQuiet) {
                EXPECT_NE(lamp, kOrange) << row;
            }
        }
    }

    void check()
    {
        rooms_.clock.advance(0ms);
        follow();
        checkPictures();
        checkReason();
        if (rooms_.window.isVisible()) {
            checkLamps();
        }
        touched_ = touched_ && live_.isFetching();
        hasDownloaded_ = false;
    }

    void play(int sequence)
    {
        random_.seed(static_cast<quint32>(sequence));
        playEvents(
            *this, kKinds, {sequence, kEvents}, [this](int bound) { return below(bound); },
            [this] { check(); });
    }

    // A new house costs more than a sequence.
    void tidyUp()
    {
        closeZoom();
        bringUp();
        rooms_.selectTab(kUsedGroups);
        for (const QString &url : kLiveUrls) {
            answer(url, script(QString()));
        }
        rooms_.clock.advance(20s);
        house_.tree.makeFolder(u"drives/c/other");
        house_.tree.makeFolder(u"drives/c/in");
        house_.storage.choose(house_.tree.path(u"drives/c/in"));
        QDir(house_.tree.path(u"drives/c/away")).removeRecursively();
        for (const QString &name : {QStringLiteral("in"), QStringLiteral("other")}) {
            QDir(house_.tree.path(QStringLiteral("drives/c/") + name)).removeRecursively();
            house_.tree.makeFolder(QStringLiteral("drives/c/") + name);
        }
        house_.tree.write(u"Velmora.ini",
                          "[Control]\r\nStRep=C:\\in\r\nTempo=60\r\nTIO=5\r\n"
                          "[Liste0]\r\nLstAct=1\r\nlst0=http://a/1.jpg\r\nlst1=http://b/1.png\r\n"
                          "[Liste1]\r\nLstAct=1\r\nlst0=http://c\r\n");
        house_.engine.adoptSettings();
        rooms_.type(QStringLiteral("Source0"), QStringLiteral("x"));
        QTest::keyClick(&box(0), Qt::Key_Backspace); // no address was shown last, as at a start
        rooms_.selectTab(0);
        loaded();
        version_ = house_.storage.version();
        live_.local = text(QStringLiteral("Locale"));
        check();
    }

    static bool HasFailure() { return testing::Test::HasFailure(); }

private:
    static const std::vector<Kind> kKinds;

    SettingsFile outside_{house_.settings.programFolder()};
    QMap<QString, LiveScript> scripts_;
    QString webPath_; // of the live picture on show
    quint64 version_ = 0;
    bool touched_ = false;       // the capture has coloured the lamp of the camera being fetched
    bool hasDownloaded_ = false; // the capture has, during the event
};

const std::vector<LiveModel::Kind> LiveModel::kKinds{
    {"click a box", &LiveModel::clickBox, 5},
    {"enter key", &LiveModel::enterKey},
    {"paste", &LiveModel::paste, 3},
    {"type a letter", &LiveModel::typeLetter},
    {"empty", &LiveModel::empty},
    {"paste lines", &LiveModel::pasteLines},
    {"save in the sheet", &LiveModel::saveInSheet},
    {"tab key", &LiveModel::tabKey},
    {"drop", &LiveModel::drop},
    {"click a tab", &LiveModel::clickTab},
    {"hide", &LiveModel::hide},
    {"bring up", &LiveModel::bringUp},
    {"other window", &LiveModel::otherWindow},
    {"enter storage", &LiveModel::enterStorage},
    {"type storage", &LiveModel::typeStorage, 2},
    {"leave storage", &LiveModel::leaveStorage, 2},
    {"resize", &LiveModel::resize},
    {"click the stored image", &LiveModel::clickTarget},
    {"click the live picture", &LiveModel::clickWeb},
    {"click a foreign picture", &LiveModel::clickForeign},
    {"close zoom", &LiveModel::closeZoom},
    {"answer anew", &LiveModel::answerAnew, 4},
    {"add", &LiveModel::add},
    {"remove", &LiveModel::remove},
    {"hear", &LiveModel::hear},
    {"tick", &LiveModel::tick},
    {"pass time", &LiveModel::passTime, 5},
    {"store an image", &LiveModel::storeImage, 2},
    {"turn the disk", &LiveModel::turnTheDisk},
    {"work", &LiveModel::work},
};

TEST_F(LiveModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) {
        {
            SCOPED_TRACE("before sequence " + std::to_string(sequence));
            tidyUp();
        }
        play(sequence);
    });
    EXPECT_GT(house_.stored().size(), 0);
}

} // namespace
} // namespace velmora::test
