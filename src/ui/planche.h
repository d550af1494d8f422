// The image browser's window. For now it says what the capture stores; it leads to the main window
// and out of the program.
//
//   planche
//     lastImages
//     NbCapt  Capt  txtLog
//     cSetUp  Mini  Quitter
#pragma once

#include "capture/ImageStore.h"
#include "settings/WindowPlace.h"

#include <QWidget>

#include <memory>

namespace Ui {
class planche;
}

namespace velmora {

class planche : public QWidget
{
    Q_OBJECT

public:
    planche(const SettingsFile &settings, EventLog &log);
    planche(const planche &) = delete;
    planche &operator=(const planche &) = delete;
    planche(planche &&) = delete;
    planche &operator=(planche &&) = delete;
    ~planche() override;

    void moveTo(WindowPlace place);

    /// A new image is in its folder, or a camera gave none.
    void showStored(CameraAddress camera, const QString &fileName);
    void showFailed(CameraAddress camera, const QString &reason);

    void showMessage(const QString &text);

    /// From now on a close is accepted instead of asked for.
    void allowClose() { mayClose_ = true; }

Q_SIGNALS:
    void setUpWanted();
    void closeWanted();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void addLine(const QString &text);

    const SettingsFile &settings_;
    EventLog &log_;
    std::unique_ptr<Ui::planche> ui_;
    int stored_ = 0;
    bool mayClose_ = false;
};

} // namespace velmora
