// The deletion of old images in camera folders of a temporary tree.
#pragma once

#include "CaptureTest.h"
#include "base/DateText.h"
#include "capture/Retention.h"

#include <QFile>

namespace velmora::test {

inline constexpr CameraAddress kKept{0, 0};

/// It is 7 March 2006, 14:05:09: images from before 7 February, 14:05:09, are old. The box of
/// camera 0:0 is ticked, and its folder holds a brand-new image.
class RetentionTest : public CaptureTest
{
protected:
    RetentionTest()
    {
        add(kKept);
        tick(kKept);
        put(kNewest);
        QObject::connect(&retention_, &Retention::imagesDeleted, &retention_,
                         [this](CameraAddress camera) { deleted_.append(camera); });
    }

    void tick(CameraAddress camera, const QString &value = QStringLiteral("1")) const
    {
        house_.setValue(u"EffM", camera, value);
    }

    void put(const QString &name, CameraAddress camera = kKept) const
    {
        house_.putImage(camera, name);
    }

    /// What is left in a camera's folder besides the newest image.
    [[nodiscard]] QStringList left(CameraAddress camera = kKept) const
    {
        QStringList names = house_.images(camera);
        names.removeAll(kNewest);
        return names;
    }

    [[nodiscard]] QString path(const QString &name = {}) const
    {
        return house_.tree.path(house_.folder(kKept) + u'/' + name);
    }

    void begin()
    {
        retention_.begin();
        house_.finish();
    }

    void follow(CameraAddress camera = kKept)
    {
        retention_.follow(camera);
        house_.finish();
    }

    static inline const QString kNewest = QStringLiteral("20060307_1405090714.jpg");
    static inline const QString kOld = QStringLiteral("20060207_1405080714.jpg");

    Retention retention_{house_.table, house_.storage, house_.log, clock_, house_.scope};
    QList<CameraAddress> deleted_;
};

} // namespace velmora::test
