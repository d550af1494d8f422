#include "view/StorageFace.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(StorageFace, OffersToMakeAFolderThatIsMissing)
{
    EXPECT_EQ(storageFace(StorageCheck::Missing),
              (StorageFace{LampColour::Red, true, HideButton::Quits}));
}

TEST(StorageFace, ConfirmsAFolderThatIsThere)
{
    EXPECT_EQ(storageFace(StorageCheck::Found),
              (StorageFace{LampColour::Green, false, HideButton::Ok}));
}

TEST(StorageFace, PromisesNothingBeforeTheFirstCheck)
{
    EXPECT_EQ(storageFace(StorageCheck::NotYet),
              (StorageFace{LampColour::None, false, HideButton::Plain}));
}

} // namespace
} // namespace velmora::test
