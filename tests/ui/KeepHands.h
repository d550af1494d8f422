// A user who makes films and copies of ranges by mouse and keys, and all that captures, other
// programs, disks and the rest of the program do meanwhile, by chance.
#pragma once

#include "KeepWorld.h"

#include <cerrno>
#include <utility>

namespace velmora::test {

class KeepHands : public KeepWorld
{
public:
    using KeepWorld::KeepWorld;

    // The browser.
    void clickCamera()
    {
        auto &list = house_.find<QListView>(QStringLiteral("lstCam"));
        const QModelIndex index = list.model()->index(below(3), 0);
        list.scrollTo(index);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(index).center());
    }

    void openKeep()
    {
        look(); // at what will be forgotten
        const bool isFree = !maker().isBusy() && box() == nullptr;
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("bKeep")), Qt::LeftButton);
        if (isFree) {
            keptText_ = house_.data.files.folder();
            source_ = QDir::cleanPath(house_.house.storage.native(keptText_));
            kept_ = listed();
            wasOpened_ = true;
            if (!std::exchange(isEndNews_, false)) {
                hasResult_ = false;
                told_.clear();
            }
        }
        QCoreApplication::processEvents();
    }

    void film()
    {
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("bFilm")), Qt::LeftButton);
        QCoreApplication::processEvents();
        house_.holdFilm();
    }

    void refresh() { house_.browser.refresh(); }

    // The window.
    void typeRange()
    {
        static const QStringList kForms{QStringLiteral("%1x"), QStringLiteral("yesterday"),
                                        QStringLiteral("2006-02-30"), QString()};
        if (!isOpen()) {
            return;
        }
        auto &edit = in<QLineEdit>(below(2) == 0 ? "filmFrom" : "filmTo");
        activate();
        edit.setFocus();
        edit.selectAll();
        const QString name = anyName();
        const QString moment = QStringLiteral("%1-%2-%3%4%5:%6:%7")
                                   .arg(name.left(4), name.mid(4, 2), name.mid(6, 2),
                                        oneIn(2) ? QStringLiteral("T") : QStringLiteral(" "),
                                        name.mid(9, 2), name.mid(11, 2), name.mid(13, 2));
        const QString form = oneIn(8)   ? anyOf(kForms)
                             : oneIn(4) ? QStringLiteral(" %1 ")
                                        : QStringLiteral("%1");
        const QString typed = moment.left(anyOf(QList<int>{10, 16, 19}));
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, form.contains(u'%') ? form.arg(typed) : form);
        if (oneIn(2)) {
            QTest::keyClick(&edit, Qt::Key_Return);
        } else if (oneIn(2)) {
            in<QWidget>("filmSize").setFocus();
        }
    }

    void turnNumber()
    {
        static const QList<const char *> kBoxes{"filmHoursFrom", "filmHoursTo",
                                                "filmThinningNumber", "filmRate"};
        static const QStringList kNumbers{QStringLiteral("1"), QStringLiteral("2"),
                                          QStringLiteral("9"), QStringLiteral("14"),
                                          QStringLiteral("24")};
        auto &number = in<QSpinBox>(anyOf(kBoxes));
        if (isOpen() && number.isEnabled()) {
            activate();
            number.setFocus();
            number.selectAll();
            QTest::keyClicks(&number, anyOf(kNumbers));
            QTest::keyClick(&number, Qt::Key_Return);
        }
    }

    void turnChoice()
    {
        static const QList<const char *> kBoxes{"filmThinning", "filmForm", "filmSize"};
        static const QList<Qt::Key> kKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
        if (isOpen()) {
            activate();
            QTest::keyClick(&in<QComboBox>(anyOf(kBoxes)), anyOf(kKeys));
            if (oneIn(3)) {
                QTest::keyClick(&in<QWidget>("filmStamp"), Qt::Key_Space);
            }
        }
    }

    void make() { press("filmMake"); }

    void copy() { press("filmCopy"); }

    // The capture and other programs go on while a target is chosen.
    void makeNow() { agree(&KeepHands::make); }

    void copyNow() { agree(&KeepHands::copy); }

    void cancel()
    {
        const bool isBusy = maker().isBusy();
        press("filmCancel");
        if (run_ && isBusy && isOpen()) {
            run_->isCancelled = true;
        }
    }

    void close()
    {
        if (isOpen()) {
            QTest::keyClick(keep_.get(), Qt::Key_Escape);
        }
    }

    void openResult()
    {
        opened_.clear();
        const bool ofFolder = oneIn(2);
        const bool isMeant = in<QWidget>("filmOpen").isEnabled() && isOpen();
        press(ofFolder ? "filmShowFolder" : "filmOpen");
        EXPECT_EQ(!opened_.isEmpty(), isMeant);
        if (isMeant && QFileInfo::exists(lastRun_.target)) {
            const bool isFile = lastRun_.isFilm && ofFolder;
            const QString wanted = isFile ? lastRun_.target.section(u'/', 0, -2) : lastRun_.target;
            EXPECT_EQ(opened_.toStdString(), wanted.toStdString());
        }
    }

    void answer()
    {
        if (box() == nullptr) {
            return;
        }
        if (oneIn(5)) {
            QTest::keyClick(box(), Qt::Key_Escape);
            dropBox();
            return;
        }
        const bool isFilm = box()->acceptMode() == QFileDialog::AcceptSave;
        run_ = agreed(isFilm);
        const qsizetype ends = ended_.size();
        const std::unique_ptr<QTimer> yes = sayYes();
        answerFileBox(*keep_, isFilm ? typedTarget_ : run_->target);
        const bool isBegun = maker().isBusy() || ended_.size() > ends;
        if (!isBegun) { // not such a folder
            run_.reset();
            QTest::keyClick(box(), Qt::Key_Escape);
        }
        dropBox();
    }

    // The world.
    void storeImage()
    {
        const CameraAddress camera = anyCamera();
        const QString name = anyName();
        if (isDiskThere() && !full_ && !images_.contains(folder(camera) + u'/' + name)) {
            put(folder(camera), name);
            Q_EMIT house_.house.store.imageStored(camera, name);
        }
    }

    void removeImage()
    {
        if (const QString path = anyImage(); !path.isEmpty()) {
            EXPECT_TRUE(QFile::remove(path));
            images_.remove(path);
            note(path, &KeepRun::removed);
        }
    }

    void damageImage()
    {
        if (const QString path = anyImage(); !path.isEmpty() && !full_) {
            const QByteArray bytes = images_[path];
            const QByteArray worse = oneIn(2) ? bytes.left(bytes.size() / 2) : "no picture";
            const bool isInPlace = oneIn(2); // else another file
            if (!isInPlace) {
                QFile::remove(path);
            }
            write(path, worse);
            broken_.insert(worse);
            everSeen_[path].insert(worse);
            images_[path] = worse;
            note(path, &KeepRun::damaged);
        }
    }

    void turnTheDisk()
    {
        const QString in = house_.house.tree.path(u"drives/c/in");
        const QString away = house_.house.tree.path(u"drives/c/away");
        const bool isThere = isDiskThere();
        EXPECT_TRUE(QDir().rename(isThere ? in : away, isThere ? away : in));
        house_.house.storage.recheck();
        trouble();
    }

    void typeStorage()
    {
        auto &storage = house_.house.storage;
        if (!storage.isBeingEdited()) {
            storage.beginEdit();
            storage.edit(QStringLiteral("C:\\o"));
        } else {
            storage.edit(oneIn(2) ? QStringLiteral("C:\\other") : QStringLiteral("C:\\in"));
            storage.putInForce();
        }
    }

    void changeRow()
    {
        const CameraAddress camera = anyCamera();
        house_.house.table.setUrl(camera, oneIn(3) ? QString()
                                                   : cameraUrl(oneIn(2) ? anyCamera() : camera));
        house_.house.page.reread();
    }

    // The targets.
    void changeTargetFolder()
    {
        const QString path = out_.path(anyOf(kTargetFolders));
        if (QFileInfo::exists(path)) {
            QDir(path).removeRecursively();
            targets_.removeIf([&](const auto &file) { return file.key().startsWith(path + u'/'); });
            if (run_ && run_->target.startsWith(path + u'/')) {
                run_->before.clear();
            }
        } else {
            QDir().mkpath(path);
        }
        trouble();
    }

    void putIntoTarget()
    {
        const QString folder = out_.path(anyOf(kTargetFolders)) + u'/';
        const QString path = folder + (oneIn(2) ? anyName() : anyFilm());
        if (!full_ && QFileInfo::exists(folder) && !QFileInfo::exists(path)) {
            write(path, "mine");
            targets_[path] = "mine";
            if (run_ && run_->target + u'/' == folder) {
                run_->were += static_cast<int>(run_->picks.contains(path.section(u'/', -1)));
            } else if (run_ && run_->target == path) {
                run_->before = "mine";
            }
        }
    }

    void fillDisk()
    {
        full_.reset();
        refused_.reset();
        const int kind = below(4);
        if (kind == 0) {
            full_ = std::make_unique<FileSizeLimit>(100);
        } else if (kind == 1) {
            refused_ = std::make_unique<RefusedCall>(Call::LinkOpened, ENOSPC);
        } else if (kind == 2) {
            refused_ =
                std::make_unique<RefusedCall>(Call::OpenNameless, oneIn(2) ? ENOSPC : EOPNOTSUPP);
        }
        trouble();
    }

    void freeDisk()
    {
        full_.reset();
        refused_.reset();
    }

    // All that stood in the way is over.
    void heal()
    {
        freeDisk();
        if (!isDiskThere()) {
            turnTheDisk();
        }
        if (house_.house.storage.isBeingEdited()) {
            typeStorage();
        }
        for (const QString &name : kTargetFolders) {
            out_.makeFolder(name);
        }
        for (const CameraAddress camera : cameras_) {
            house_.house.table.setUrl(camera, cameraUrl(camera));
        }
        house_.house.page.reread();
        if (isOpen()) {
            close();
        }
        openKeep();
    }

    void passATurn() { QCoreApplication::processEvents(); }

    void passTurns()
    {
        for (int turns = below(30); turns > 0; --turns) {
            QCoreApplication::processEvents();
        }
    }

    void finish()
    {
        settle();
        isAtRest_ = true;
    }

    void check() { std::exchange(isAtRest_, false) ? lookAtRest() : look(); }

private:
    void agree(void (KeepHands::*press)())
    {
        static const QList<void (KeepHands::*)()> kMeanwhile{
            &KeepHands::storeImage, &KeepHands::removeImage, &KeepHands::clickCamera,
            &KeepHands::passTurns, &KeepHands::openKeep};
        (this->*press)();
        for (int events = below(2) * below(3); events > 0; --events) {
            (this->*anyOf(kMeanwhile))();
        }
        answer();
    }

    // As the next turn of the event loop does.
    static void dropBox() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void activate()
    {
        keep_->activateWindow();
        QCoreApplication::processEvents();
    }

    bool isAtRest_ = false;
};

} // namespace velmora::test
