// What happens around the import, by chance: other programs, disks, the capture, the storage box
// and the browser.
#pragma once

#include "ImportHands.h"
#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"

#include <QLineEdit>
#include <QPointer>
#include <QTabBar>

#include <set>

namespace velmora::test {

class ImportWorld : public ImportHands
{
protected:
    ImportWorld()
    {
        house().log.setOn(false);
        QObject::connect(&house().store, &ImageStore::loaded, &following_,
                         [this] { isCapturing_ = false; });
        QObject::connect(&house().storage, &StorageFolder::checked, &following_,
                         [this] { followStorage(); });
    }

    // In the source's folder, the target's or elsewhere.
    QString anyFolder()
    {
        switch (below(6)) {
        case 0:
            return targetFolder(inForce());
        case 1:
            return tree(QStringLiteral("drives/c/card/DCIM"));
        case 2:
            return tree(QStringLiteral("drives/e"));
        default:
            return oneIn(4) ? native(choices_.folder) : tree(QStringLiteral("drives/c/card"));
        }
    }

    QString anyName()
    {
        static const QStringList kNames{QStringLiteral("20061005_1230450000.jpg"),
                                        QStringLiteral("20061005_1230450001.jpg"),
                                        QStringLiteral("20061005_1230450000.JPG"),
                                        QStringLiteral("20061005_1230450001jpg"),
                                        QStringLiteral("20061005_1230450002pg"),
                                        QStringLiteral("20071005_1230450003.jpeg"),
                                        QStringLiteral("a.jpg"),
                                        QStringLiteral("B.JPG"),
                                        QStringLiteral("c.tar.jpg"),
                                        QStringLiteral("d.jpg"),
                                        QStringLiteral("noDot"),
                                        QStringLiteral("e."),
                                        QStringLiteral("2abc.jpg"),
                                        QStringLiteral("A0061005_1230450000.jpg"),
                                        QStringLiteral("20061005_123045.jpg"),
                                        QStringLiteral("20061006_000000.jpg"),
                                        QString(252, u'n'),
                                        QString(230, u'm') + QStringLiteral(".jpg")};
        return any(kNames);
    }

    // No two are the same.
    QByteArray anyBytes()
    {
        static const QByteArray kPicture = pictureBytes(Qt::red, {16, 12});
        const QByteArray number = QByteArray::number(++contents_);
        QByteArray bytes = oneIn(4) ? "text " + number : kPicture + number;
        if (oneIn(10)) {
            bytes += QByteArray(qsizetype{3} << 20, 'x');
        }
        return bytes;
    }

    void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        if (QFileInfo(path).dir().exists() && file.open(QIODevice::WriteOnly)) {
            file.write(bytes);
            allFiles_.forget(path);
            known_.insert(bytes);
        }
    }

    // Files are there or gone from now on, whatever is under way. A run that goes through them may
    // be aborted.
    void tookEffect()
    {
        world_ = everything();
        isBrowserDue_ = false;
        isStirred_ = true;
        disturb();
        if (run_) {
            run_->isAlone = false;
        }
    }

    // Whatever is being read may hold what was there before or what is there now.
    void disturb()
    {
        mayBeUnread_ = mayBeUnread_ || files_.isDue;
        for (Reading *const reading : {&files_, &folders_, &sourceImage_, &targetImage_}) {
            reading->isDisturbed = reading->isDisturbed || reading->isDue;
        }
    }

    void mayAbort()
    {
        if (run_) {
            run_->mayAbort = true;
        }
    }

    void addFile()
    {
        const QString path = anyFolder() + u'/' + anyName();
        if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink()) {
            write(path, anyBytes());
            tookEffect();
            mayAbort(); // it may be the one that cannot be copied
        }
    }

    QString anyFile()
    {
        const QString folder = anyFolder();
        const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
        return names.isEmpty() ? QString() : folder + u'/' + any(names);
    }

    void removeFile()
    {
        if (const QString path = anyFile(); !path.isEmpty()) {
            QFile::remove(path);
            tookEffect();
            mayAbort();
        }
    }

    // A camera's card is still being written, or was broken and is whole now.
    void changeFile()
    {
        const QString path = anyFile();
        if (!path.isEmpty() && !QFileInfo(path).isSymLink()) {
            write(path, anyBytes());
            tookEffect();
            mayAbort();
        }
    }

    void breakFile()
    {
        if (const QString path = anyFile(); path.contains(u"/card/")) {
            QFile::remove(path);
            QFile::link(QStringLiteral("/proc/self/mem"), path);
            tookEffect();
            mayAbort();
        }
    }

    void turnFolder()
    {
        const QString path = any(QStringList{tree(QStringLiteral("drives/c/card/DCIM")),
                                             tree(QStringLiteral("drives/c/card/More")),
                                             tree(QStringLiteral("drives/e"))});
        QFileInfo(path).exists() ? QDir(path).removeRecursively() : QDir().mkpath(path);
        tookEffect();
        mayAbort();
    }

    void turn(const QString &there, const QString &away)
    {
        QFileInfo::exists(there) ? QDir().rename(there, away) : QDir().rename(away, there);
        away_.insert(there, away);
        tookEffect();
        mayAbort();
    }

    // The next folder that is read breaks off.
    void failReading()
    {
        disturb();
        const RefusedCall failing(Call::ReadFolder, EIO, 1, below(3));
        isFailing_ = true;
        if (run_) {
            run_->isAlone = false;
            run_->mayAbort = true;
        }
        ImportHands::turn();
        isFailing_ = false;
    }

    // The same, while a list is read.
    void failListing()
    {
        if (!mayChoose() || choices_.filter.count(u'*') != choices_.filter.size()) {
            return;
        }
        const RefusedCall failing(Call::ReadFolder, EIO, 1, below(3));
        QTest::keyClick(&rooms_.find<QWidget>("Filtre"), Qt::Key_Asterisk);
        choices_.filter += u'*';
        store(QStringLiteral("Patern"), choices_.filter);
        isFailing_ = true;
        count();
        ImportHands::turn();
        isFailing_ = false;
    }

    void fillTheDisk()
    {
        if (run_) {
            run_->isAlone = false;
            run_->mayAbort = true;
        }
        const FileSizeLimit full(rlim_t{700} << 10);
        for (int turns = below(4); turns > 0; --turns) {
            ImportHands::turn();
        }
    }

    // Copies under way need a name on such a file system.
    void changeFileSystem()
    {
        if (!nameless_) {
            nameless_.emplace(Call::OpenNameless, EOPNOTSUPP);
        } else {
            nameless_.reset();
        }
    }

    // All disks and folders are there again.
    void mend()
    {
        for (auto place = away_.begin(); place != away_.end(); ++place) {
            if (!QFileInfo::exists(place.key())) {
                QDir().rename(place.value(), place.key());
            }
        }
        away_.clear();
        tookEffect();
        mayAbort();
        checkStorage();
    }

    void turnTheSource()
    {
        turn(tree(QStringLiteral("drives/c/card")), tree(QStringLiteral("away/card")));
    }

    void turnTheDisk()
    {
        turn(tree(QStringLiteral("drives/c/in")), tree(QStringLiteral("away/in")));
        if (oneIn(2)) {
            checkStorage();
        }
    }

    void turnTheTarget()
    {
        const QString there = targetFolder(inForce());
        if (!address(target()).isEmpty()) {
            turn(there, tree(QStringLiteral("away/") + QFileInfo(there).fileName()));
        }
    }

    // The watch over it.
    void checkStorage() { house().storage.recheck(); }

    QLineEdit &storageBox() { return rooms_.inMain<QLineEdit>(QStringLiteral("StRep")); }

    void typeStorage()
    {
        static const QStringList kTexts{QStringLiteral("C:\\in"), QStringLiteral("C:\\in"),
                                        QStringLiteral("C:\\other"), QStringLiteral("C:\\none")};
        if (mayUseMain()) {
            QTest::mouseClick(&storageBox(), Qt::LeftButton);
            if (oneIn(2)) {
                QTest::keyClick(&storageBox(), Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(&storageBox(), any(kTexts));
            }
        }
    }

    void leaveStorage()
    {
        if (mayUseMain() && storageBox().hasFocus()) {
            QTest::keyClick(&storageBox(), oneIn(2) ? Qt::Key_Return : Qt::Key_Tab);
        }
    }

    void nameStorage()
    {
        house().storage.choose(
            tree(oneIn(2) ? QStringLiteral("drives/c/in") : QStringLiteral("drives/c/other")));
    }

    // The picture of a folder that was not there may be there now.
    void followStorage()
    {
        mayLookAgain_ = true;
        if (inForce() != storage_) {
            storage_ = inForce();
            targetImage_ = {true};
        }
        if (run_ && inForce() != run_->storage) {
            run_->isOvertaken = true;
            run_->isAlone = false;
        }
    }

    QString anyAddress(CameraAddress camera)
    {
        const CameraAddress other{9, camera.row};
        return oneIn(5) ? QString() : cameraUrl(oneIn(4) ? other : camera);
    }

    void followAddress(CameraAddress camera, const QString &url)
    {
        if (std::exchange(address(camera), url) != url && camera.group == choices_.group &&
            camera.row == choices_.row) {
            targetImage_ = {true};
            if (run_) {
                run_->isAlone = false;
                run_->mayAbort = true;
            }
        }
    }

    // In a row of the main window.
    void typeAddress()
    {
        const CameraAddress camera{0, below(3)};
        const QString url = anyAddress(camera);
        if (!mayUseMain()) {
            return;
        }
        auto &box = rooms_.inMain<QLineEdit>(QStringLiteral("Source%1").arg(camera.row));
        QTest::mouseClick(&box, Qt::LeftButton);
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClicks(&box, url);
        QTest::keyClick(&box, Qt::Key_Return);
        rooms_.inMain<QTabBar>(QStringLiteral("Selecteur")).setFocus();
        followAddress(camera, url);
    }

    // By a command.
    void changeAddress()
    {
        const CameraAddress camera = any(kUsed);
        const QString url = anyAddress(camera);
        house().table.setUrl(camera, url);
        house().engine.adoptSettings();
        followAddress(camera, url);
    }

    void capture()
    {
        const CameraAddress camera = any(kUsed);
        const QString url = address(camera);
        if (url.isEmpty() || std::exchange(isCapturing_, true)) {
            return;
        }
        const QByteArray bytes = pictureBytes(Qt::green, {16, 12}) + QByteArray(1000, 'c') +
                                 QByteArray::number(++contents_);
        const QDateTime date = QDateTime({2006, 10, 5}, {12, 30, 45}).addSecs(contents_ % 3);
        rooms_.rooms.source.answer(
            url, {bytes,
                  QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")) +
                      QStringLiteral(" GMT"),
                  {},
                  {},
                  {}});
        captured_.insert(bytes);
        house().scope.launch(
            house().store.ChargeFile(url, house().storage.cameraFolderText(camera), camera));
        if (run_) {
            run_->isAlone = false;
            run_->mayAbort = run_->mayAbort || run_->alone.mayRunOut;
        }
    }

    QListView &inBrowser(const char *name)
    {
        return rooms_.rooms.find<QListView>(QLatin1String(name));
    }

    void chooseInBrowser()
    {
        if (!mayUse(rooms_.browser)) {
            return;
        }
        if (oneIn(4)) {
            QTest::mouseClick(&rooms_.rooms.find<QWidget>(QStringLiteral("cCamera")),
                              Qt::LeftButton, {}, QPoint(8, 8));
            return;
        }
        QListView &view = inBrowser(oneIn(3) ? "lstGroupe" : oneIn(2) ? "lstCam" : "LstDir");
        if (view.isVisible() && view.model()->rowCount() > 0) {
            const QModelIndex index =
                view.model()->index(below(std::min(3, view.model()->rowCount())), 0);
            view.scrollTo(index);
            QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
        }
    }

    void deleteInBrowser()
    {
        if (!mayUse(rooms_.browser)) {
            return;
        }
        QListView &view = inBrowser(inBrowser("LstDir").isVisible() ? "LstDir" : "LstDirCam");
        QTest::keyClick(&view, Qt::Key_Delete);
        const QPointer<QMessageBox> box = rooms_.rooms.question();
        for (int turns = below(3); turns > 0; --turns) {
            ImportHands::turn(); // in which the image may go
        }
        if (box == nullptr) {
            return;
        }
        const QString name = box->text().mid(QStringLiteral("Kill ").size());
        const bool isYes = !oneIn(3);
        const QMap<QString, QByteArray> before = everything();
        QTest::mouseClick(box->button(isYes ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
        const QMap<QString, QByteArray> after = everything();
        EXPECT_LE(before.size() - after.size(), isYes ? 1 : 0);
        for (auto file = before.begin(); file != before.end(); ++file) {
            EXPECT_TRUE(after.contains(file.key()) || isNamed(file.key(), name))
                << file.key().toStdString() << " for " << name.toStdString();
        }
        deleted_ = isYes && before.size() == after.size() ? name : QString();
        if (before.size() != after.size()) {
            tookEffect();
        }
        mayAbort();
    }

    // By the conformity pass: "20061005_123045.jpg" gets day and hour after its time.
    static bool isRenamed(const QString &from, const QString &to)
    {
        constexpr int kShort = 15;
        constexpr int kLong = 19;
        const QFileInfo before(from);
        const QFileInfo after(to);
        return before.path() == after.path() && before.fileName().indexOf(u'.') == kShort &&
               after.fileName().indexOf(u'.') == kLong &&
               after.fileName().first(kShort) == before.fileName().first(kShort);
    }

    // In group view the question has the end of the path.
    static bool isNamed(QString path, const QString &end)
    {
        return !end.isEmpty() && path.replace(u'/', u'\\').endsWith(end);
    }

    void refreshBrowser() { QTest::keyClick(rooms_.browser.windowHandle(), Qt::Key_F5); }

    void changePace() { rooms_.rooms.busy.setCost(std::chrono::milliseconds{below(3) * 5}); }

    void passATurn() { ImportHands::turn(); }

    void passTurns()
    {
        for (int turns = below(6); turns > 0 && !HasFailure(); --turns) {
            ImportHands::turn();
        }
    }

    static bool HasFailure() { return testing::Test::HasFailure(); }

    std::set<QByteArray> known_; // what was ever put into a file
    std::set<QByteArray> captured_;
    std::optional<RefusedCall> nameless_;
    QMap<QString, QString> away_; // where what is or was away belongs, and where it is
    QString storage_;
    QObject following_; // ends before the rooms, which check the storage folder while they end
    QString deleted_;   // is deleted as soon as the browser can
    int contents_ = 0;
    bool isCapturing_ = false;
    bool isStirred_ = false;    // since all was last at rest
    bool isBrowserDue_ = false; // after a run it has read its folder again
    bool mayLookAgain_ = false;
};

} // namespace velmora::test
