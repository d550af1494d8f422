// The window that shows how each camera delivers.
//
//   health
//     healthFilter
//     healthTable
//     healthRoom
//     healthNotices healthMail healthDelete healthStop healthNever healthLateTimes healthLimit
#pragma once

#include "health/HealthTable.h"
#include "health/HealthWatch.h"

#include <QSortFilterProxyModel>
#include <QWidget>

#include <memory>

class QCheckBox;

namespace Ui {
class HealthWindow;
}

namespace velmora {

class HealthWindow : public QWidget
{
    Q_OBJECT

public:
    /// Everything passed in outlives the window.
    HealthWindow(HealthBook &book, HealthWatch &watch, const SettingsFile &settings);
    Q_DISABLE_COPY_MOVE(HealthWindow)
    ~HealthWindow() override;

    /// Shows the window in front.
    void present();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The browser is to show this camera.
    void cameraWanted(velmora::CameraAddress camera);

private:
    struct Chosen
    {
        CameraAddress camera;
        QString folder; // tells it from another camera in the same row

        bool operator==(const Chosen &) const = default;
    };

    void setUpTable();
    void bindTable();
    void bindKeys();
    void bindChoice(QCheckBox &box, HealthChoice choice);
    void bindChoices();
    void bindNumbers();
    void widenToTitles();
    void placeFirst();
    void chooseFirst();
    void showChoices();
    void showRoom();
    void showNever();
    void setNever(bool never);
    void sortByCursor();
    void goToCamera();
    void copy();
    [[nodiscard]] std::optional<CameraAddress> current() const;
    [[nodiscard]] std::optional<Chosen> chosen() const;

    HealthBook &book_;
    HealthWatch &watch_;
    HealthOptions options_;
    std::unique_ptr<Ui::HealthWindow> ui_;
    HealthTable table_;
    QSortFilterProxyModel shown_;      // the table, filtered and sorted
    std::optional<Chosen> pressedFor_; // "Never late", between press and release
    bool isPlaced_ = false;
};

} // namespace velmora
