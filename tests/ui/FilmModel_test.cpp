// Whatever a user, the capture and other programs do around the film, the film to keep, the
// calendar and the search, in any order: the film shows what FilmRule says, its window and the film
// to keep agree with it, the browser's own rules hold, and no file goes but those that were acted
// on.
#include "FilmHands.h"
#include "base/ImagesText.h"
#include "support/Sequences.h"

#include <QProgressBar>

namespace velmora::test {
namespace {

constexpr int kEvents = 50;
constexpr int kSequences = 25;

class FilmModel : public FilmHands
{
protected:
    void play(int sequence)
    {
        seed(sequence);
        tidyUp();
        done_.clear();
        isQuiet_ = true;
        for (int event = 0; event < kEvents && !HasFailure(); ++event) {
            const Kind &kind = kKinds.at(below(static_cast<int>(kKinds.size())));
            done_.append(QString::fromLatin1(kind.name));
            SCOPED_TRACE(("sequence " + std::to_string(sequence) + ": " +
                          done_.join(QStringLiteral(", ")).toStdString()));
            run(kind);
        }
    }

private:
    enum class Film { MayBegin, GoesOn };
    enum class Files { Change, Stay };

    struct Kind
    {
        const char *name;
        void (FilmModel::*run)();
        Film film = Film::MayBegin; // whether it may begin again with the same folder
        Files files = Files::Stay;
    };

    void run(const Kind &kind)
    {
        const QString folder = rule_.folder();
        const bool mayBegin = kind.film == Film::MayBegin || !isQuiet_;
        begun_ = 0;
        (this->*kind.run)();
        if (kind.files == Files::Change) {
            files_ = allImages();
        }
        if (kind.film == Film::MayBegin && rule_.isOpen) {
            takeMove();
        }
        checkFilm();
        isQuiet_ = below(3) > 0;
        if (isQuiet_) {
            done_.append(QStringLiteral("settled"));
            house_.settle();
            if (kind.film == Film::MayBegin && rule_.isOpen) {
                takeMove();
            }
            lookAtRest();
            checkAtRest();
            EXPECT_TRUE(mayBegin || begun_ == 0 || rule_.folder() != folder)
                << folder.toStdString();
        }
        house_.holdFilm();
    }

    // A new house costs more than a sequence.
    void tidyUp()
    {
        house_.busy.setCost(std::chrono::milliseconds{0});
        letGo();
        house_.settle();
        closeKeep();
        calendar_.close();
        closeFilm();
        if (!isDiskThere()) {
            turnTheDisk();
        }
        storage().edit(QStringLiteral("C:\\in"));
        storage().putInForce();
        fillFolders();
        refresh();
        house_.settle();
        files_ = allImages();
    }

    void fillFolders()
    {
        for (const QString &path : allImages()) {
            QFile::remove(path);
        }
        for (const CameraAddress camera : cameras_) {
            house_.house.table.setUrl(camera, cameraUrl(camera));
            for (int images = below(2) * below(20); images > 0; --images) {
                write(imagePath(camera, anyName()));
            }
        }
        house_.house.page.reread();
    }

    // True at every instant.
    void checkFilm()
    {
        const FilmFace &face = house_.film.face();
        EXPECT_EQ(house_.film.isOpen(), rule_.isOpen);
        if (!rule_.isOpen) {
            EXPECT_EQ(shownPath(), QString());
            path_.clear();
            return;
        }
        EXPECT_EQ(textsOf(face), textsOf(rule_));
        checkControls(face);
    }

    static QStringList textsOf(const FilmFace &face)
    {
        return {face.PauseCine, text(face.range),  QString::number(face.count),
                face.nFich,     face.image.path(), face.Compte,
                face.Compte0,   face.tDebut,       face.tFin};
    }

    static QStringList textsOf(const FilmRule &rule)
    {
        return {rule.isPaused ? QStringLiteral("Start") : QStringLiteral("Pause"),
                text(rule.range),
                QString::number(rule.count),
                rule.image.name.left(15),
                rule.image.path(),
                rule.Compte,
                rule.Compte0,
                rule.tDebut,
                rule.tFin};
    }

    // A click on a cell of the camera view takes the film to its image, and lets it play on.
    void takeMove()
    {
        const int current = house_.film.current();
        if (!isGroupView() && current != rule_.current() && current <= house_.data.files.count()) {
            rule_.moveTo(current - 1);
        }
        if (!rule_.isPaused && house_.film.isRunning()) {
            rule_.isRunning = true; // though it had stopped by itself
        }
    }

    void checkControls(const FilmFace &face)
    {
        const QStringList labels{house_.find<QAbstractButton>(QStringLiteral("PauseCine")).text(),
                                 house_.text(QStringLiteral("Compte")),
                                 house_.text(QStringLiteral("Compte0")),
                                 house_.text(QStringLiteral("nFich"))};
        EXPECT_EQ(labels, QStringList({face.PauseCine, face.Compte, face.Compte0, face.nFich}));
        const PlayRange sliders{house_.find<QSlider>(QStringLiteral("sDebut")).value(),
                                house_.find<QSlider>(QStringLiteral("sFin")).value()};
        EXPECT_TRUE(face.count == 0 || sliders == face.range) << text(sliders).toStdString();
        checkBar(face);
        checkPicture(face);
    }

    void checkBar(const FilmFace &face)
    {
        EXPECT_EQ(house_.film.current(), rule_.current());
        const auto &bar = house_.find<QProgressBar>(QStringLiteral("Barre"));
        EXPECT_EQ(bar.maximum(), std::max(1, face.range.end - face.range.start + 1));
        EXPECT_TRUE(rule_.progress > bar.maximum() || bar.value() == rule_.progress);
    }

    void checkPicture(const FilmFace &face)
    {
        const QString path = nativePath(storage(), face.image);
        wasThere_ = QFile::exists(path) && (wasThere_ || path_ != path);
        path_ = path;
        EXPECT_TRUE(shownPath() == path || (shownPath().isEmpty() && !wasThere_));
    }

    QString shownPath()
    {
        return house_.find<QWidget>(QStringLiteral("iCine")).accessibleDescription();
    }

    void checkAtRest()
    {
        EXPECT_EQ(allImages(), files_);
        EXPECT_FALSE(mustBeClosed_ && isFilmOpen());
        EXPECT_EQ(house_.film.isRunning(), rule_.isRunning);
        checkList();
        if (keep_->isVisible() && !isHalfTyped_) {
            checkForecast();
            checkKeep();
        }
    }

    void checkList()
    {
        const FileList &files = house_.data.files;
        const bool isKept = rule_.isOpen && rule_.wasPaused && isGroupView(); // by the film
        if (storage().isUsable() && !isKept) {
            EXPECT_EQ(files.folder(), storage().cameraFolderText(house_.data.state.camera()));
        }
        EXPECT_TRUE(!house_.film.isPlaying() || rule_.isResumed ||
                    files.folder() == rule_.folder());
    }

    void checkForecast()
    {
        const PlayRange run = span(*kept_);
        const int images = std::max(0, run.end - run.start + 1);
        const QString forecast = inKeep<QLabel>("filmForecast").text();
        if (kept_->count() == 0) {
            EXPECT_EQ(forecast, QStringLiteral("There are no images."));
        } else if (!isBoxLeftEmpty()) {
            EXPECT_TRUE(forecast.startsWith(imagesText(images) + u',')) << forecast.toStdString();
        }
    }

    void checkKeep()
    {
        const bool isOfFilm = rule_.isOpen && rule_.folder() == keptFolder_ &&
                              house_.data.files.folder() == keptFolder_;
        const int last = static_cast<int>(kept_->count()); // the film may extend beyond it
        const PlayRange left{std::min(rule_.range.start, last), std::min(rule_.range.end, last)};
        const PlayRange run = span(*kept_);
        if (isOfFilm && run.start <= run.end && !isBoxLeftEmpty()) {
            EXPECT_EQ(text(left), text(run))
                << inKeep<QLineEdit>("filmFrom").text().toStdString() << " to "
                << inKeep<QLineEdit>("filmTo").text().toStdString();
        }
    }

    // By a user who typed into the other one alone, before there were images.
    bool isBoxLeftEmpty()
    {
        return isTyped_ && (inKeep<QLineEdit>("filmFrom").text().isEmpty() ||
                            inKeep<QLineEdit>("filmTo").text().isEmpty());
    }

    static const QList<Kind> kKinds;

    QStringList done_;
    QStringList files_;
    QString path_; // of the image on show
    bool wasThere_ = false;
};

const QList<FilmModel::Kind> FilmModel::kKinds{
    {"press a row", &FilmModel::pressRow},
    {"let go", &FilmModel::letGo},
    {"press a cell", &FilmModel::pressCell},
    {"click a row", &FilmModel::clickRow},
    {"click a row", &FilmModel::clickRow},
    {"click a cell", &FilmModel::clickCell},
    {"click a cell", &FilmModel::clickCell},
    {"key", &FilmModel::key},
    {"mode", &FilmModel::mode},
    {"mode", &FilmModel::mode},
    {"scan", &FilmModel::scan, Film::GoesOn},
    {"refresh", &FilmModel::refresh},
    {"other window", &FilmModel::otherWindow, Film::GoesOn},
    {"delete", &FilmModel::deleteImage, Film::MayBegin, Files::Change},
    {"type folder", &FilmModel::typeFolder, Film::GoesOn},
    {"put folder in force", &FilmModel::putInForce},
    {"other address", &FilmModel::otherAddress},
    {"import", &FilmModel::imported},
    {"close and reopen", &FilmModel::closeAndReopen},
    {"press film button", &FilmModel::pressFilmButton},
    {"press film button", &FilmModel::pressFilmButton},
    {"press film button", &FilmModel::pressFilmButton},
    {"tick", &FilmModel::tick, Film::GoesOn},
    {"tick", &FilmModel::tick, Film::GoesOn},
    {"tick", &FilmModel::tick, Film::GoesOn},
    {"press pause", &FilmModel::pressPause, Film::GoesOn},
    {"press pause", &FilmModel::pressPause, Film::GoesOn},
    {"move slider", &FilmModel::moveSlider, Film::GoesOn},
    {"move slider", &FilmModel::moveSlider, Film::GoesOn},
    {"move slider", &FilmModel::moveSlider, Film::GoesOn},
    {"click picture", &FilmModel::clickPicture, Film::GoesOn},
    {"search day", &FilmModel::searchDay, Film::GoesOn},
    {"search date", &FilmModel::searchDate},
    {"close film", &FilmModel::closeFilm, Film::GoesOn},
    {"press Setup", &FilmModel::pressSetup, Film::GoesOn},
    {"open keep", &FilmModel::openKeep, Film::GoesOn},
    {"open keep", &FilmModel::openKeep, Film::GoesOn},
    {"type range", &FilmModel::typeRange, Film::GoesOn},
    {"type range", &FilmModel::typeRange, Film::GoesOn},
    {"leave range", &FilmModel::leaveRange, Film::GoesOn},
    {"copy range", &FilmModel::copyRange, Film::MayBegin, Files::Change},
    {"close keep", &FilmModel::closeKeep, Film::GoesOn},
    {"use calendar", &FilmModel::useCalendar},
    {"use calendar", &FilmModel::useCalendar},
    {"use calendar", &FilmModel::useCalendar},
    {"store image", &FilmModel::storeImage, Film::MayBegin, Files::Change},
    {"store image", &FilmModel::storeImage, Film::MayBegin, Files::Change},
    {"add image", &FilmModel::addImage, Film::GoesOn, Files::Change},
    {"rename image", &FilmModel::renameImage, Film::GoesOn, Files::Change},
    {"remove image", &FilmModel::removeImage, Film::GoesOn, Files::Change},
    {"turn the disk", &FilmModel::turnTheDisk, Film::MayBegin, Files::Change},
    {"change pace", &FilmModel::changePace, Film::GoesOn},
    {"pass a turn", &FilmModel::passATurn, Film::GoesOn}};

TEST_F(FilmModel, HoldsAfterEveryEventOfRandomSequences)
{
    playSequences(kSequences, [this](int sequence) { play(sequence); });
}

} // namespace
} // namespace velmora::test
