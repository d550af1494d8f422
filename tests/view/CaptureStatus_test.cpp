// The captions of the capture.
#include "view/CaptureStatus.h"

#include "support/Printers.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(CaptureStatus, IsEmptyAtFirst)
{
    const CaptureStatus status;
    EXPECT_EQ(status.text(Caption::Step), QString());
    EXPECT_EQ(status.text(Caption::Trouble), QString());
}

TEST(CaptureStatus, KeepsEachCaptionForItself)
{
    CaptureStatus status;
    status.set(Caption::Step, QStringLiteral("Wait"));
    status.set(Caption::Trouble, QStringLiteral("full"));
    EXPECT_EQ(status.text(Caption::Step), QStringLiteral("Wait"));
    EXPECT_EQ(status.text(Caption::Activity), QString());
    EXPECT_EQ(status.text(Caption::Trouble), QStringLiteral("full"));
}

TEST(CaptureStatus, TellsOnlyOfChanges)
{
    CaptureStatus status;
    QStringList told;
    QObject::connect(&status, &CaptureStatus::changed, &status,
                     [&told](Caption, const QString &text) { told.append(text); });
    status.set(Caption::Step, QStringLiteral("Wait"));
    status.set(Caption::Step, QStringLiteral("Wait"));
    status.set(Caption::Step, QString());
    EXPECT_EQ(told, (QStringList{QStringLiteral("Wait"), QString()}));
}

} // namespace
} // namespace velmora::test
