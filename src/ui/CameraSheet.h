// A camera's sheet: its choices, and a test of the camera.
//
//   CameraSheet
//     sheetName  sheetAddress  sheetUser  sheetPassword | sheetPicture
//     sheetKeep  sheetPercent  sheetDifference          |
//     sheetMessage  sheetResult                         |
//     sheetTest                          sheetSave  sheetCancel
#pragma once

#include "view/CameraTrial.h"
#include "view/ChoicesEdit.h"

#include <QWidget>

#include <memory>

namespace Ui {
class CameraSheet;
}

namespace velmora {

class CameraSheet : public QWidget
{
    Q_OBJECT

public:
    /// Everything passed in outlives the sheet.
    CameraSheet(const SettingsFile &settings, CameraTrial &trial);
    Q_DISABLE_COPY_MOVE(CameraSheet)
    ~CameraSheet() override;

    /// Shows the sheet of a camera in front. Changes made in an open sheet, even another camera's,
    /// stay until it is saved or cancelled.
    void present(CameraAddress camera);

Q_SIGNALS:
    /// The camera's row is to get this address, as if typed there.
    void addressChosen(velmora::CameraAddress camera, const QString &address);

    /// Name, login or the choice of pictures to keep were stored.
    void saved();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    [[nodiscard]] KeepChoice keep() const;
    [[nodiscard]] CameraFields fields() const;
    void begin(CameraAddress camera);
    void fill(const CameraFields &stored);
    void test();
    void save();
    void giveAddress(const CameraFields &now);
    void showResult(const TrialResult &result);
    void showPercent();

    ChoicesEdit edit_;
    CameraTrial &trial_;
    std::unique_ptr<Ui::CameraSheet> ui_;
};

} // namespace velmora
