// Remarks on each camera.
#include "view/CameraRemarks.h"

#include "support/Printers.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(CameraRemarks, AreKeptForEachCamera)
{
    CameraRemarks remarks;
    remarks.set({3, 7}, QStringLiteral("out"));
    EXPECT_EQ(remarks.of({3, 7}), QStringLiteral("out"));
    EXPECT_EQ(remarks.of({7, 3}), QString());
}

TEST(CameraRemarks, TellEachChangeOnce)
{
    CameraRemarks remarks;
    QStringList told;
    QObject::connect(&remarks, &CameraRemarks::changed, &remarks, [&](CameraAddress camera) {
        told.append(
            QStringLiteral("%1:%2 %3").arg(camera.group).arg(camera.row).arg(remarks.of(camera)));
    });
    remarks.set({0, 1}, QString());
    remarks.set({0, 1}, QStringLiteral("out"));
    remarks.set({0, 1}, QStringLiteral("out"));
    remarks.set({0, 1}, QString());
    EXPECT_EQ(told, QStringList({QStringLiteral("0:1 out"), QStringLiteral("0:1 ")}));
}

} // namespace
} // namespace velmora::test
