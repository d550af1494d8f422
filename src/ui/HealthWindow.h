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

#include <QTimer>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

namespace velmora {

class NumberBox;

class HealthWindow : public QWidget
{
    Q_OBJECT

public:
    /// Everything passed in outlives the window.
    HealthWindow(HealthBook &book, HealthWatch &watch, const SettingsFile &settings);

    /// Shows the window in front.
    void present();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The browser is to show this camera.
    void cameraWanted(velmora::CameraAddress camera);

private:
    void makeTable();
    void makeChoices();
    QCheckBox *choiceBox(const QString &text, const char *name, HealthChoice choice);
    void makeNumbers();
    void arrange();
    void widenToTitles();
    void placeFirst();
    void bind();
    void showChoices();
    void showRoom();
    void showNever();
    void setNever(bool never);
    void sortByCursor();
    void goToCamera();
    void copy();
    [[nodiscard]] std::optional<CameraAddress> current() const;

    HealthBook &book_;
    HealthWatch &watch_;
    HealthOptions options_;
    HealthTable table_;
    QSortFilterProxyModel *shown_ = nullptr;
    QLineEdit *filter_ = nullptr;
    QTableView *view_ = nullptr;
    bool isPlaced_ = false;
    QLabel *room_ = nullptr;
    QCheckBox *notices_ = nullptr;
    QCheckBox *mail_ = nullptr;
    QCheckBox *deletion_ = nullptr;
    QCheckBox *stop_ = nullptr;
    QCheckBox *never_ = nullptr;
    NumberBox *lateTimes_ = nullptr;
    NumberBox *limit_ = nullptr;
};

} // namespace velmora
