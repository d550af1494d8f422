// The names in a folder, to check whether one of them is taken.
#include "tools/TakenNames.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(TakenNames, AreThoseThatDifferOnlyInCase)
{
    TakenNames names;
    names.add("20061005_1230450000.JPG");
    names.add("\xC3\x89T\xC3\x89.jpg");
    EXPECT_TRUE(names.holds("20061005_1230450000.JPG"));
    EXPECT_TRUE(names.holds("20061005_1230450000.jpg"));
    EXPECT_TRUE(names.holds("\xC3\xA9t\xC3\xA9.JPG"));
    EXPECT_FALSE(names.holds("20061005_1230450001.jpg"));
    EXPECT_FALSE(names.holds(""));
}

} // namespace
} // namespace velmora
