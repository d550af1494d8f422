// Many cameras at once: a list is pasted or opened, and a preview shows what would go where before
// any of it is stored.
//
//   CameraListWindow
//     listText
//     listPreview
//     listMessage
//     listOpen  listExport              listStore  listClose
#pragma once

#include "admin/ListEdit.h"

#include <QWidget>

#include <memory>

namespace Ui {
class CameraListWindow;
}

namespace velmora {

class CameraListWindow : public QWidget
{
    Q_OBJECT

public:
    /// settings: outlives the window.
    explicit CameraListWindow(const SettingsFile &settings);
    Q_DISABLE_COPY_MOVE(CameraListWindow)
    ~CameraListWindow() override;

    /// Shows the window in front, with an empty list unless it is already open.
    void present();

    /// Loads the text of an ordinary file, whole or not at all, to be corrected like what is
    /// pasted. path: native.
    void openFile(const QString &path);

Q_SIGNALS:
    /// Cameras are about to be stored: what is being typed elsewhere is to be stored before.
    void storing();

    /// Cameras were stored.
    void stored();

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void showPlan();
    void fitColumns();
    void showStore(bool mayStore);
    void showLine(int line, const PlannedCamera &planned);
    void read(const QByteArray &bytes);
    void store();
    void chooseFile();
    void chooseTarget();

    const SettingsFile &settings_;
    ListEdit edit_;
    std::unique_ptr<Ui::CameraListWindow> ui_;
};

} // namespace velmora
