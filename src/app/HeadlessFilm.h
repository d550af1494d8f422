// Makes a film without windows: reports its progress on a terminal, and the outcome.
#pragma once

#include "base/Clock.h"

// These come after it: the toolkit's compiler can parse them only in this order.
#include "base/TaskScope.h"
#include "browser/FolderReader.h"
#include "start/FilmCommand.h"
#include "tools/FilmExport.h"

#include <QObject>

namespace velmora {

class HeadlessFilm : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMade = 0;
    static constexpr int kFailed = 1;
    static constexpr int kInterrupted = 130; // a shell's status for an interrupt

    /// programFolder: native path; its settings give the camera's folder. The clock outlives the
    /// object.
    HeadlessFilm(FilmRequest request, QString programFolder, Clock &clock);

    /// Starts; the application quits at the end.
    void start();

    /// Gives up the film.
    void interrupt();

    /// The exit status for the shell.
    [[nodiscard]] int status() const { return status_; }

private:
    QCoro::Task<> run();
    [[nodiscard]] QString imageFolder();
    void follow();
    void report(FilmEnd end, const QString &text);
    QCoro::Task<> leave();
    static void say(const QString &text);

    FilmRequest request_;
    QString programFolder_;
    Clock &clock_;
    TaskScope shutdown_;
    TaskScope scope_;
    FolderReader reader_;
    FilmExport film_;
    QString camera_;
    QString problem_; // why there are no images to make a film of
    int shownPercent_ = -1;
    int status_ = kFailed;
};

} // namespace velmora
