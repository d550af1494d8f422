// A live view on scripted cameras, with everything it does recorded in order.
#pragma once

#include "capture/CaptureTest.h"
#include "support/NativeFiles.h"
#include "view/LiveView.h"

#include <QDir>
#include <QFile>

namespace velmora::test {

inline constexpr CameraAddress kShown{0, 7};
inline const QString kLoading = QStringLiteral("Chargement en cours ....");
inline const QString kClick = QStringLiteral("Web : cliquer sur l'image pour zoomer.");
inline const QString kTarget = QStringLiteral("drives/c/in/tmp/Target.jpg");

/// Group 0 is on show, and its camera 7 has an address.
class LiveViewTest : public CaptureTest
{
protected:
    LiveViewTest()
        : CaptureTest(EngineWork::TakesTime)
    {
        add(kShown);
        house_.showGroup(0);
        record();
        busy_.takeYields();
    }

    ~LiveViewTest() override
    {
        house_.scope.requestStop();
        clock_.advance(std::chrono::milliseconds{0});
    }

    void record()
    {
        QObject::connect(&live_, &LiveView::statusCleared, &recorder_,
                         [this] { note(QStringLiteral("status")); });
        QObject::connect(&live_, &LiveView::captionsChanged, &recorder_, [this] {
            note(QStringLiteral("captions ") + live_.captions().web + u'|' +
                 live_.captions().local);
        });
        QObject::connect(&live_, &LiveView::targetChanged, &recorder_, [this](const QString &path) {
            storedPicture_ = path;
            note(QStringLiteral("target ") + path.section(u'/', -1));
        });
        QObject::connect(&live_, &LiveView::webChanged, &recorder_, [this](const QString &path) {
            note(QStringLiteral("web ") + path.section(u'/', -1));
        });
        QObject::connect(&house_.page, &CameraPage::rowChanged, &recorder_, [this](int row) {
            note(QStringLiteral("row %1 %2 %3")
                     .arg(row)
                     .arg(static_cast<int>(house_.page.row(row).lamp))
                     .arg(house_.page.row(row).loadSeconds));
        });
    }

    void note(const QString &event) { events_.append(event.trimmed()); }

    /// Shows a camera; goes on as the test advances the clock.
    void begin(CameraAddress camera, const QString &url)
    {
        live_.Affiche(camera, url);
        clock_.advance(std::chrono::milliseconds{0});
    }

    /// Shows camera 7 until done.
    void show(const QString &url = cameraUrl(kShown))
    {
        live_.Affiche(kShown, url);
        clock_.advance(std::chrono::seconds{10});
    }

    void answer(const QString &url, const QByteArray &body)
    {
        source_.answer(url, {body, {}, {}, {}, {}});
    }

    /// The contents of the live picture's file; "-" when there is none.
    [[nodiscard]] QByteArray target() const
    {
        return house_.tree.exists(kTarget) ? house_.tree.read(kTarget) : QByteArray("-");
    }

    void putTarget(const QByteArray &bytes) const { house_.tree.write(kTarget, bytes); }

    [[nodiscard]] QString imagePath(const QString &name, CameraAddress camera = kShown) const
    {
        return house_.tree.path(house_.folder(camera)) + u'/' + name;
    }

    void removeStorage() const
    {
        ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    }

    LiveView &live_ = house_.view.liveView();
    QStringList events_;
    QString storedPicture_; // as last shown
    QObject recorder_;
};

} // namespace velmora::test
