// One run of the program in which films and copies of ranges are made, with what is known of the
// images, of the targets and of what was agreed.
#pragma once

#include "BrowserWindowHouse.h"
#include "FileBoxHands.h"
#include "KeepRules.h"
#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"
#include "ui/FilmKeep.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSet>
#include <QSpinBox>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace velmora::test {

/// A film or a copy, as agreed, with what has happened since.
struct KeepRun
{
    bool isFilm = false;
    QString target;    // native path of the file or the folder
    QString source;    // native path of the images
    QStringList picks; // their names
    KeepBoxes boxes;
    QByteArray before; // the film that was there
    int were = 0;      // of the picks, in the target
    int removed = 0;   // of the picks, by others
    int damaged = 0;
    bool isCancelled = false;
    bool isTroubled = false; // by a disk, a folder or a renaming
};

class KeepWorld
{
public:
    /// out: outlives it.
    KeepWorld(const TempTree &out, int seed);
    Q_DISABLE_COPY_MOVE(KeepWorld)

    /// The program ends, in order or after an error.
    ~KeepWorld();

    /// True at every instant.
    void look();

    void settle();

    /// When nothing is left to be done.
    void lookAtRest();

    [[nodiscard]] int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    [[nodiscard]] static QStringList filesIn(const QString &folder);

    /// What the targets hold.
    [[nodiscard]] const QMap<QString, QByteArray> &targets() const { return targets_; }

    [[nodiscard]] int films() const { return films_; }

    [[nodiscard]] int copies() const { return copies_; }

protected:
    [[nodiscard]] bool oneIn(int chances) { return below(chances) == 0; }

    template <typename Value>
    [[nodiscard]] Value anyOf(const QList<Value> &values)
    {
        return values.at(below(static_cast<int>(values.size())));
    }

    template <typename Control>
    [[nodiscard]] Control &in(const char *name) const
    {
        return *keep_->findChild<Control *>(QLatin1String(name));
    }

    [[nodiscard]] FilmMaker &maker() { return house_.images.filmMaker(); }

    /// That asks for a file or a folder; none once it has been answered.
    [[nodiscard]] QFileDialog *box() const
    {
        auto *const box = keep_->findChild<QFileDialog *>();
        return box != nullptr && box->isVisible() ? box : nullptr;
    }

    [[nodiscard]] bool isOpen() const { return keep_->isVisible() && box() == nullptr; }

    [[nodiscard]] CameraAddress anyCamera() { return anyOf(cameras_); }

    [[nodiscard]] QString folder(CameraAddress camera) const;
    [[nodiscard]] QString anyName();
    [[nodiscard]] QString anyFilm();
    [[nodiscard]] QString anyImage();
    [[nodiscard]] bool isDiskThere() const;
    static void write(const QString &path, const QByteArray &bytes);
    static QByteArray read(const QString &path);
    void put(const QString &folder, const QString &name);
    void note(const QString &path, int KeepRun::*count);
    void trouble();
    void press(const char *button);
    [[nodiscard]] KeepBoxes boxes() const;
    [[nodiscard]] QStringList listed() const;
    [[nodiscard]] KeepRun agreed(bool isFilm);
    [[nodiscard]] std::unique_ptr<QTimer> sayYes();
    void lookAtTargets();

    static const QStringList kTargetFolders;
    const QList<CameraAddress> cameras_{{0, 0}, {0, 1}, {0, 2}};

    const TempTree &out_;
    QRandomGenerator random_;
    BrowserWindowHouse house_;
    std::unique_ptr<FilmKeep> keep_;
    std::unique_ptr<FileSizeLimit> full_;
    std::unique_ptr<RefusedCall> refused_;
    std::optional<KeepRun> run_;
    KeepRun lastRun_;
    QString keptText_;    // the folder for which the window was opened
    QString source_;      // its native path
    QStringList kept_;    // its images, as last listed
    QString typedTarget_; // of a film
    QString opened_;
    QStringList ended_;
    QMap<QString, QByteArray> images_;         // by path
    QMap<QString, QSet<QByteArray>> everSeen_; // what each has ever held
    QSet<QByteArray> broken_;                  // what is no picture
    QMap<QString, QByteArray> targets_;
    bool wasOpened_ = false;
    bool hasResult_ = false;
    QString told_;
    bool isEndNews_ = false; // it was told while the window was closed

private:
    void followList();
    void lookAtImages();
    void lookAtTarget(const QString &path);
    void lookAtWindow();
    void lookAtForecast();
    void judgeEnd(const QString &text);
    void judgeFilm(const QString &text);
    void judgeCopy(const QString &text);
    [[nodiscard]] QString expectedRefusal() const;

    QByteArray picture(const QString &path);

    int films_ = 0;
    int copies_ = 0;
    QObject here_; // the first to go
};

} // namespace velmora::test
