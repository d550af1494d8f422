// The wheel over the boxes of a camera's sheet.
#include "TurnedWheel.h"
#include "WindowHouse.h"
#include "ui/CameraSheet.h"

#include <QComboBox>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(WheelFocus, TurnsNothingInACamerasSheetThatHasNotTheFocus)
{
    WindowHouse house;
    CameraSheet sheet{house.house.settings, house.house.view.trial()};
    sheet.present({0, 3});
    auto &keep = *sheet.findChild<QComboBox *>(QStringLiteral("sheetKeep"));
    const int chosen = keep.currentIndex();
    turnWheel(keep);
    EXPECT_EQ(keep.currentIndex(), chosen);
    keep.setCurrentIndex(static_cast<int>(Keep::Clearly));
    auto &percent = *sheet.findChild<QSpinBox *>(QStringLiteral("sheetPercent"));
    const int shown = percent.value();
    turnWheel(percent);
    EXPECT_EQ(percent.value(), shown);
}

} // namespace
} // namespace velmora::test
