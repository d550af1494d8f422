// Which settings file the program starts from.
#include "app/SettingsPreparation.h"

#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class SettingsPreparation : public testing::Test
{
protected:
    SettingsPreparation()
    {
        tree_.makeFolder(u"program");
        tree_.makeFolder(u"windows");
    }

    void prepare() { prepareSettings(tree_.path(u"program"), tree_.path(u"windows")); }

    TempTree tree_;
};

TEST_F(SettingsPreparation, AnOldFileMovesInAndWins)
{
    tree_.write(u"windows/Velmora.ini", "old place");
    tree_.write(u"program/Velmora.ini", "program folder");
    tree_.write(u"program/Velmora0.ini", "template");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "old place");
    EXPECT_FALSE(tree_.exists(u"windows/Velmora.ini"));
}

TEST_F(SettingsPreparation, TheFirstRunStartsFromTheTemplate)
{
    tree_.write(u"program/Velmora0.ini", "template");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "template");
    EXPECT_TRUE(tree_.exists(u"program/Velmora0.ini"));
}

TEST_F(SettingsPreparation, AFileThatIsThereStays)
{
    tree_.write(u"program/Velmora.ini", "mine");
    tree_.write(u"program/Velmora0.ini", "template");
    prepare();
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

TEST_F(SettingsPreparation, WithoutAnyFileThereIsNone)
{
    prepare();
    EXPECT_FALSE(tree_.exists(u"program/Velmora.ini"));
}

TEST_F(SettingsPreparation, WithoutAnOldFolderNothingMoves)
{
    tree_.write(u"program/Velmora.ini", "mine");
    prepareSettings(tree_.path(u"program"), {});
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

TEST_F(SettingsPreparation, TheProgramFolderAsOldFolderLosesNothing)
{
    tree_.write(u"program/Velmora.ini", "mine");
    prepareSettings(tree_.path(u"program"), tree_.path(u"program"));
    EXPECT_EQ(tree_.read(u"program/Velmora.ini"), "mine");
}

TEST_F(SettingsPreparation, AnOldFileThatCannotBeCopiedStays)
{
    tree_.write(u"windows/Velmora.ini", "old place");
    prepareSettings(tree_.path(u"missing"), tree_.path(u"windows"));
    EXPECT_EQ(tree_.read(u"windows/Velmora.ini"), "old place");
}

} // namespace
} // namespace velmora::test
