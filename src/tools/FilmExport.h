// Makes a film file of a camera's images: pictures go one by one through a pipe to ffmpeg, so that
// their number does not matter, and the file appears under its name only when it is whole.
#pragma once

#include "base/Ffmpeg.h"
#include "base/HiddenFile.h"
#include "base/WorkSlice.h"
#include "tools/FilmForm.h"
#include "tools/FilmPicture.h"
#include "tools/FilmRange.h"

#include <QObject>

#include <memory>

namespace velmora {

struct FilmOrder
{
    QString folder; // native path of the images
    std::shared_ptr<const ImageNames> names;
    FilmPicks picks; // positions in the names
    FilmRate rate;
    QSize size;             // empty: the size of the first picture
    bool isStamped = false; // date and camera are drawn into the pictures
    QString camera;
    QString target; // native path; its extension decides the format
};

struct FilmTally
{
    qint64 all = 0;    // images picked
    qint64 done = 0;   // images looked at
    qint64 shown = 0;  // in the film
    qint64 broken = 0; // left out: not whole pictures
    qint64 gone = 0;   // left out: deleted meanwhile
    qint64 bytes = 0;  // size of the film so far
    QSize size;

    [[nodiscard]] qint64 leftOut() const { return broken + gone; }
};

/// That the folder of the images has gone; folder: as shown.
[[nodiscard]] QString missingFolderText(const QString &folder);

/// That images get other names at the moment.
[[nodiscard]] QString renamingText();

enum class FilmEnd { Made, Failed, Cancelled };

/// One film at a time.
class FilmExport : public QObject
{
    Q_OBJECT

public:
    /// The clock outlives the object.
    explicit FilmExport(const Clock &clock);
    Q_DISABLE_COPY_MOVE(FilmExport)
    ~FilmExport() override = default; // kills an ffmpeg that is running

    [[nodiscard]] bool isRunning() const { return step_ != Step::Idle; }

    [[nodiscard]] const FilmTally &tally() const { return tally_; }

    /// Starts; `ended` follows in every case. Does nothing while a film is being made.
    void start(FilmOrder order);

    /// Ends it; nothing of the file remains.
    void cancel();

Q_SIGNALS:
    void advanced();

    /// text: why it was not made, for the user; empty otherwise.
    void ended(velmora::FilmEnd end, const QString &text);

private:
    enum class Step { Idle, Asking, Feeding, Finishing, Ending };

    void begin();
    void ask();
    void makeFfmpeg();
    void follow(FfmpegEnd end);
    void takeAnswer();
    void feed();
    void takeNext();
    [[nodiscard]] FilmPicture picture(const QString &name) const;
    void startEncoder(QSize size);
    void closeInput();
    void takeFilm(FfmpegEnd end);
    void fail(const QString &text);
    void stop(FilmEnd end, const QString &text);
    void leave();
    [[nodiscard]] QString writingComplaint() const;

    const Clock &clock_;
    WorkSlice slice_;
    FilmOrder order_;
    FilmTally tally_;
    FilmForm form_ = FilmForm::Mp4;
    QString encoder_;
    std::unique_ptr<HiddenFile> file_;
    std::unique_ptr<Ffmpeg> ffmpeg_;
    Step step_ = Step::Idle;
    bool isQueued_ = false; // feed() will run without being called
    FilmEnd end_ = FilmEnd::Failed;
    QString text_;
};

} // namespace velmora
