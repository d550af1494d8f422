// A user who does anything with mouse and keys on the film, the film to keep, the calendar and the
// search, by chance. What the film must show then is kept by FilmRule.
#pragma once

#include "BrowserModel.h"
#include "FileBoxHands.h"
#include "FilmRule.h"
#include "ui/CalendarWindow.h"
#include "ui/FilmKeep.h"

#include <QScopedValueRollback>

namespace velmora::test {

class FilmHands : public BrowserModel
{
protected:
    FilmHands()
    {
        followFilm();
        followSliders();
        keep_ = std::make_unique<FilmKeep>(house_.images.filmMaker(), house_.film);
        QObject::connect(&house_.images.calendar(), &Calendar::rangeChosen, keep_.get(),
                         &FilmKeep::takeDays);
        const auto present = [this](const std::optional<DayRange> &days) { keep_->present(days); };
        QObject::connect(&house_.window, &planche::keepWanted, keep_.get(), [this, present] {
            present(calendar_.isVisible() ? house_.images.calendar().range() : std::nullopt);
        });
        QObject::connect(&house_.filmWindow, &fCine::keepWanted, keep_.get(),
                         [present] { present({}); });
    }

    template <typename Control>
    Control &inKeep(const char *name)
    {
        return *keep_->findChild<Control *>(QLatin1String(name));
    }

    bool isFilmOpen() { return house_.filmWindow.isVisible(); }

    /// One of 48 names on four days, three of them in one minute.
    QString anyName()
    {
        static const QStringList kDays{QStringLiteral("05"), QStringLiteral("07"),
                                       QStringLiteral("08"), QStringLiteral("11")};
        static const QStringList kTimes{QStringLiteral("0000"), QStringLiteral("0930"),
                                        QStringLiteral("1405"), QStringLiteral("2359")};
        return QStringLiteral("200603%1_%2%3")
                   .arg(kDays.at(below(4)), kTimes.at(below(4)))
                   .arg(below(3) * 10, 2, 10, QLatin1Char('0')) +
               QStringLiteral("0714.jpg");
    }

    // Events.
    void pressFilmButton()
    {
        const bool wasOpen = isFilmOpen();
        const bool isMeant = isFilmEnabled();
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("bFilm")), Qt::LeftButton);
        mustBeClosed_ = mustBeClosed_ && !isMeant;
        if (isQuiet_ && below(2) == 0) {
            house_.settle();
            const bool opens = !wasOpen && house_.data.files.count() > 0;
            EXPECT_EQ(isFilmOpen(), isMeant ? opens : wasOpen);
        }
    }

    void tick()
    {
        for (int ticks = 1 + below(6); ticks > 0 && cine().isActive(); --ticks) {
            house_.fire(QStringLiteral("cine"));
        }
    }

    void pressPause()
    {
        const bool ran = house_.film.isRunning();
        if (isFilmOpen() && below(2) == 0) {
            QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("PauseCine")), Qt::LeftButton);
        } else {
            QTest::keyClick(&view(isGroupView() ? kRowsOfGroup : kImages), Qt::Key_Space);
        }
        if (rule_.isOpen) {
            rule_.press(ran);
        }
    }

    void moveSlider()
    {
        static const QList<Qt::Key> kKeys{Qt::Key_Left, Qt::Key_Right,  Qt::Key_Home,
                                          Qt::Key_End,  Qt::Key_PageUp, Qt::Key_PageDown};
        const QStringList sliders{QStringLiteral("sDebut"), QStringLiteral("sFin"),
                                  QStringLiteral("vitesse")};
        auto &slider = house_.find<QSlider>(sliders.at(below(3)));
        if (isFilmOpen() && slider.isEnabled()) {
            const QScopedValueRollback sliding(isSliding_, true);
            QTest::keyClick(&slider, kKeys.at(below(static_cast<int>(kKeys.size()))));
        }
    }

    void clickPicture()
    {
        if (!isFilmOpen()) {
            return;
        }
        const int before = house_.data.files.ListIndex();
        const bool counts = !isGroupView() && before >= 2;
        const int meant = counts ? rule_.click() : before;
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("iCine")), Qt::LeftButton);
        EXPECT_EQ(house_.data.files.ListIndex(), meant);
    }

    void searchDay()
    {
        if (!isFilmOpen()) {
            return;
        }
        const QString box = below(2) == 0 ? QStringLiteral("tDebut") : QStringLiteral("tFin");
        const QString begin = anyName().left(6 + below(12));
        const int before = house_.data.files.ListIndex();
        house_.retype(box, begin);
        QTest::keyClick(&house_.find<QWidget>(box), Qt::Key_Return);
        EXPECT_EQ(house_.data.files.ListIndex(),
                  firstOf([&](const QString &name) { return name.startsWith(begin); }, before));
    }

    void searchDate()
    {
        letGo(); // no one types with a button held
        if (isGroupView()) {
            return;
        }
        const QString name = anyName();
        const QString day = name.left(8);
        const QString time = name.mid(9, 4);
        house_.retype(QStringLiteral("lDate"),
                      QStringLiteral("%1/%2/%3").arg(day.mid(6), day.mid(4, 2), day.left(4)));
        house_.retype(QStringLiteral("lTime"),
                      QStringLiteral("%1:%2").arg(time.left(2), time.mid(2)));
        const int before = house_.data.files.ListIndex();
        QTest::keyClick(&house_.find<QWidget>(QStringLiteral("lTime")), Qt::Key_Return);
        const int ofDay = firstOf([&](const QString &of) { return of.contains(day); }, before);
        const QString key = day + u'_' + time;
        EXPECT_EQ(house_.data.files.ListIndex(),
                  firstOf([&](const QString &of) { return of.contains(key); }, ofDay));
    }

    void closeFilm()
    {
        if (isFilmOpen()) {
            house_.filmWindow.close();
            mustBeClosed_ = true;
        }
    }

    void pressSetup()
    {
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("cSetUp")), Qt::LeftButton);
        mustBeClosed_ = true;
    }

    void openKeep()
    {
        const bool isOfFilm = isFilmOpen() && below(2) == 0;
        const QString button = isOfFilm ? QStringLiteral("bKeepFilm") : QStringLiteral("bKeep");
        QTest::mouseClick(&house_.find<QWidget>(button), Qt::LeftButton);
        keptFolder_ = keep_->isVisible() ? house_.data.files.folder() : QString();
        kept_ = house_.data.files.shared();
        QCoreApplication::processEvents();
    }

    void typeRange()
    {
        if (!keep_->isVisible()) {
            return;
        }
        const char *const box = below(2) == 0 ? "filmFrom" : "filmTo";
        keep_->activateWindow();
        QCoreApplication::processEvents();
        inKeep<QLineEdit>(box).setFocus();
        inKeep<QLineEdit>(box).selectAll();
        const QString name = anyName();
        const QString moment = QStringLiteral("%1-%2-%3 %4:%5:%6")
                                   .arg(name.left(4), name.mid(4, 2), name.mid(6, 2),
                                        name.mid(9, 2), name.mid(11, 2), name.mid(13, 2));
        QTest::keyClicks(&inKeep<QLineEdit>(box), moment.left(QList<int>{10, 16, 19}.at(below(3))));
        isHalfTyped_ = true;
        isTyped_ = true;
        if (below(3) > 0) {
            QTest::keyClick(&inKeep<QLineEdit>(box), Qt::Key_Return);
            isHalfTyped_ = false;
        }
    }

    void leaveRange()
    {
        if (keep_->isVisible()) {
            keep_->activateWindow();
            QCoreApplication::processEvents();
            inKeep<QWidget>("filmSize").setFocus();
            isHalfTyped_ = false;
        }
    }

    void closeKeep()
    {
        leaveRange();
        keep_->close();
        isTyped_ = false;
    }

    // What is agreed is what is copied, whatever comes before the answer.
    void copyRange()
    {
        leaveRange();
        auto &button = inKeep<QAbstractButton>("filmCopy");
        if (below(4) > 0 || !keep_->isVisible() || !button.isEnabled() || !storage().isUsable()) {
            return;
        }
        QTest::mouseClick(&button, Qt::LeftButton);
        const QString from = inKeep<QLineEdit>("filmFrom").text();
        const QString to = inKeep<QLineEdit>("filmTo").text();
        for (int events = below(3); events > 0; --events) {
            below(2) == 0 ? storeImage() : tick();
            house_.settle();
        }
        EXPECT_EQ(from, inKeep<QLineEdit>("filmFrom").text());
        EXPECT_EQ(to, inKeep<QLineEdit>("filmTo").text());
        const QStringList wanted = imagesToKeep();
        const QString target = QStringLiteral("out/%1").arg(++copies_);
        house_.house.tree.makeFolder(target);
        answerFileBox(*keep_, house_.house.tree.path(target));
        EXPECT_TRUE(QTest::qWaitFor([this] { return !house_.images.filmMaker().isBusy(); }));
        house_.settle();
        EXPECT_EQ(house_.house.tree.files(target), wanted);
    }

    // Those in the span that are still there.
    QStringList imagesToKeep()
    {
        QStringList names;
        const PlayRange run = span(*kept_);
        for (int i = run.start; i <= run.end; ++i) {
            const QString name = QFile::decodeName(kept_->name(i - 1));
            if (QFile::exists(nativePath(storage(), {keptFolder_, name}))) {
                names.append(name);
            }
        }
        return names;
    }

    void useCalendar()
    {
        static const QList<Qt::Key> kKeys{Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,
                                          Qt::Key_End,  Qt::Key_Down,  Qt::Key_Return};
        leaveRange();
        if (!calendar_.isVisible()) {
            calendar_.present();
        } else if (below(6) == 0) {
            calendar_.close();
        } else {
            QTest::keyClick(calendar_.findChild<QWidget *>(QStringLiteral("calendarDays")),
                            kKeys.at(below(static_cast<int>(kKeys.size()))),
                            below(2) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
        }
    }

    void storeImage()
    {
        const CameraAddress camera = anyCamera();
        const QString name = anyName();
        if (isDiskThere() && !QFile::exists(imagePath(camera, name))) {
            write(imagePath(camera, name));
            Q_EMIT house_.house.store.imageStored(camera, name);
        }
    }

    // By another program.
    void addImage()
    {
        if (isDiskThere()) {
            write(imagePath(anyCamera(), anyName()));
        }
    }

    void renameImage()
    {
        const CameraAddress camera = anyCamera();
        if (const QString name = anyImage(camera); !name.isEmpty()) {
            QFile::rename(imagePath(camera, name), imagePath(camera, anyName()));
        }
    }

    void removeImage()
    {
        const CameraAddress camera = anyCamera();
        if (const QString name = anyImage(camera); !name.isEmpty()) {
            QFile::remove(imagePath(camera, name));
            if (below(2) == 0) {
                house_.browser.showDeletion(camera); // for its age
            }
        }
    }

    QString anyImage(CameraAddress camera)
    {
        const QDir folder(QFileInfo(imagePath(camera, {})).path());
        const QStringList names = folder.entryList(QDir::Files);
        return names.isEmpty() ? QString() : names.at(below(static_cast<int>(names.size())));
    }

    bool isDiskThere() { return !QFileInfo::exists(house_.house.tree.path(u"drives/c/away")); }

    void turnTheDisk()
    {
        const QString there = house_.house.tree.path(u"drives/c/in");
        const QString away = house_.house.tree.path(u"drives/c/away");
        const bool isThere = isDiskThere();
        QDir().rename(isThere ? there : away, isThere ? away : there);
        house_.house.storage.recheck();
    }

    void changePace() { house_.busy.setCost(std::chrono::milliseconds{below(2) * 10}); }

    void passATurn() { QCoreApplication::processEvents(); }

    static void write(const QString &path)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        static const QByteArray kPicture = pictureBytes(Qt::red, {16, 12});
        file.write(kPicture);
    }

    CameraAddress anyCamera() { return cameras_.at(below(static_cast<int>(cameras_.size()))); }

    QTimer &cine() { return house_.find<QTimer>(QStringLiteral("cine")); }

    template <typename Is>
    int firstOf(Is is, int otherwise)
    {
        for (int i = 0; i < house_.data.files.count(); ++i) {
            if (is(house_.data.files.file(i).name)) {
                return i;
            }
        }
        return otherwise;
    }

    static QString text(const PlayRange &range)
    {
        return QStringLiteral("%1 to %2").arg(range.start).arg(range.end);
    }

    /// The run of the list within the text of the boxes, counted from 1.
    PlayRange span(const ImageNames &names)
    {
        const auto key = [](QString text) {
            return text.remove(u'-').remove(u':').replace(u' ', u'_').toLatin1();
        };
        const QByteArray from = key(inKeep<QLineEdit>("filmFrom").text());
        const QByteArray to = key(inKeep<QLineEdit>("filmTo").text());
        PlayRange run{1, 0};
        for (int i = 0; i < names.count(); ++i) {
            const QByteArray name = names.name(i);
            run.start += name.left(from.size()) < from ? 1 : 0;
            run.end += name.left(to.size()) <= to ? 1 : 0;
        }
        return run;
    }

    std::unique_ptr<FilmKeep> keep_;
    CalendarWindow calendar_{house_.images.calendar()};
    FilmRule rule_{house_.data.files};
    QString keptFolder_;                     // for which the window was opened
    std::shared_ptr<const ImageNames> kept_; // as last listed
    bool isHalfTyped_ = false;
    bool isTyped_ = false;      // since the film to keep was opened
    bool mustBeClosed_ = false; // the film
    bool isQuiet_ = false;      // all that was done has had its effect
    int begun_ = 0;             // since the event began

private:
    void followFilm()
    {
        QObject::connect(&house_.film, &Slideshow::begun, &here_, [this] {
            EXPECT_TRUE(!rule_.isOpen || !rule_.isPaused || isGroupView()) << "a paused one began";
            rule_.begin();
            ++begun_;
        });
        QObject::connect(&house_.film, &Slideshow::closed, &here_, [this] { rule_.close(); });
        QObject::connect(&house_.film, &Slideshow::changed, &here_, [this] { takeGiven(); });
        QObject::connect(&cine(), &QTimer::timeout, &here_, [this] { rule_.tick(); });
        QObject::connect(&house_.data.files, &QAbstractItemModel::modelReset, &here_,
                         [this] { followList(); });
        QObject::connect(&house_.house.storage, &StorageFolder::checked, &here_,
                         [this](const StorageState &state) { rule_.hold(!state.captureEnabled); });
        QObject::connect(&house_.house.scheduler, &Scheduler::timersStopped, &here_,
                         [this] { rule_.hold(true); });
    }

    void followSliders()
    {
        QObject::connect(&house_.find<QSlider>(QStringLiteral("sDebut")), &QSlider::valueChanged,
                         &here_, [this](int value) { rule_.moveStart(value); });
        QObject::connect(&house_.find<QSlider>(QStringLiteral("sFin")), &QSlider::valueChanged,
                         &here_, [this](int value) { rule_.moveEnd(value); });
    }

    void followList()
    {
        const bool isRight = rule_.follow() || !house_.film.isOpen(); // as it is being closed
        EXPECT_TRUE(isRight) << "a playing film has not begun again";
        if (house_.data.files.folder() == keptFolder_) {
            kept_ = house_.data.files.shared();
        }
    }

    // A range that came neither from the sliders nor from the list is that of the film to keep.
    void takeGiven()
    {
        if (isSliding_ || !rule_.isOpen) {
            return;
        }
        followList();
        if (house_.film.face().range != rule_.range) {
            EXPECT_TRUE(isHalfTyped_ ||
                        house_.film.face().range == span(house_.data.files.names()));
            rule_.give(house_.film.face().range);
        }
    }

    bool isSliding_ = false;
    int copies_ = 0;
    QObject here_; // the first to go
};

} // namespace velmora::test
