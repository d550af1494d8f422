// The window that imports images.
//
//   frmImport
//     source     Drive1   Filtre  NbF   iSource
//                Dir1     File1
//                nRep
//     target     Label2   Cam  Lien     iTarget
//     foot       Progress  ctr          cmdGo  cmdQuit
//     lStatus
#pragma once

#include "pictures/PictureLoader.h"
#include "tools/Import.h"

#include <QWidget>

#include <memory>

namespace Ui {
class frmImport;
}

namespace velmora {

class PictureView;

class frmImport : public QWidget
{
    Q_OBJECT

public:
    /// loader: used by this window alone. Everything passed in outlives the window.
    frmImport(Import &import, PictureLoader &loader);
    Q_DISABLE_COPY_MOVE(frmImport)
    ~frmImport() override;

    /// Shows the window in front; one that was closed is loaded again.
    void present();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void bindSource();
    void bindTarget();
    void bindButtons();
    void showFace();
    void showDrives();
    void showChoices(const ImportFace &face);
    void showRun(const ImportFace &face);
    void enableGo(const ImportFace &face);
    void showStatus(const ImportFace &face);
    void showPictures();
    void showPicture(const PictureOrder &order, const QImage &image);
    void showMessage(const QString &text);
    [[nodiscard]] QList<PictureOrder> wantedPictures() const;
    [[nodiscard]] PictureView &view(int place) const;

    Import &import_;
    PictureLoader &loader_;
    std::unique_ptr<Ui::frmImport> ui_;
    QStringList drives_; // as the list shows them
    QList<PictureOrder> pictures_;
    int looks_ = 0; // at their files
    bool loaded_ = false;
};

} // namespace velmora
