// The slideshow's window.
//
//   fCine
//     iCine
//     PauseCine  Barre  Compte  Compte0  nFich  bKeepFilm
//     tDebut  sDebut
//     tFin    sFin
//     vitesse
#pragma once

#include "cameras/StorageFolder.h"
#include "settings/WindowPlace.h"
#include "tools/Slideshow.h"
#include "ui/FramePlace.h"

#include <QLineEdit>
#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class fCine;
}

namespace velmora {

class fCine : public QWidget
{
    Q_OBJECT

public:
    /// Everything passed in outlives the window.
    fCine(Slideshow &film, const SettingsFile &settings, const StorageFolder &storage);
    Q_DISABLE_COPY_MOVE(fCine)
    ~fCine() override;

    void moveTo(WindowPlace place);

    /// Shows in the title which camera's film this is; empty for one without a name.
    void nameCamera(const QString &camera);

    /// Keeps the film above this window, the browser's, and above no other. It outlives the film.
    void standAbove(QWidget &browser) { browser_ = &browser; }

Q_SIGNALS:
    void keepWanted();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void bindFilm();
    void bindControls();
    void open();
    void takeStoredPlace();
    [[nodiscard]] int storedPixels(const Int16Key &key, int now) const;
    void storePlace();
    void showFace();
    void showDay(QLineEdit &box, const QString &day) const;
    void showSliders(const FilmFace &face);
    void showPicture();
    void followBrowser();
    void keepAboveBrowser();

    Slideshow &film_;
    const SettingsFile &settings_;
    const StorageFolder &storage_;
    std::unique_ptr<Ui::fCine> ui_;
    FramePlace *place_;
    QWidget *browser_ = nullptr;
    QTimer Timer1;
    QString title_; // without a camera
    QString shown_;
    QSize shownPixels_;
};

} // namespace velmora
