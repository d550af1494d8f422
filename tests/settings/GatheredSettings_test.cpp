// Settings that reach the file together: read at once, stored when they are settled.
#include "settings/SettingsFile.h"
#include "support/FileSizeLimit.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <array>
#include <sys/stat.h>

namespace velmora {
namespace {

using test::FileSizeLimit;
using test::TempTree;

const QByteArray kBefore = "[Liste0]\r\nURL0=http://cam/a.jpg\r\nSB0=255\r\n[Other]\r\nx=1\r\n";

class GatheredSettings : public testing::Test
{
protected:
    GatheredSettings() { store(kBefore); }

    void store(const QByteArray &text) const { tree.write(u"Velmora.ini", text); }

    [[nodiscard]] QByteArray text() const { return tree.read(u"Velmora.ini"); }

    [[nodiscard]] ino_t file() const
    {
        struct stat info = {};
        EXPECT_EQ(::stat(settings.path().toUtf8().constData(), &info), 0);
        return info.st_ino;
    }

    TempTree tree;
    SettingsFile settings{tree.path()};
};

TEST_F(GatheredSettings, ReachTheFileWhenTheyAreSettled)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Liste0", u"SB0", u"65280");
    settings.write(u"Liste0", u"lNew0", 7);
    const std::array values = {
        SettingsValue{QStringLiteral("Other"), QStringLiteral("x"), QStringLiteral("2\r\nEvil=1")},
        SettingsValue{QStringLiteral("New"), QStringLiteral("y"), QStringLiteral("3")}};
    EXPECT_EQ(settings.write(values), SettingsChange::Made);
    EXPECT_EQ(text(), kBefore);
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_EQ(text(), QByteArray("[Liste0]\r\nURL0=http://cam/a.jpg\r\nSB0=65280\r\nlNew0=7\r\n"
                                 "[Other]\r\nx=2\r\n[New]\r\ny=3\r\n"));
}

TEST_F(GatheredSettings, AreReadAtOnce)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Liste0", u"SB0", u"65280");
    settings.write(u"Liste0", u"TimeLoad0", 3);
    settings.write(u"Liste0", u"Name0", QString(300, u'v'));
    EXPECT_EQ(settings.read(u"Liste0", u"SB0"), QStringLiteral("65280"));
    EXPECT_EQ(settings.int16(u"Liste0", u"TimeLoad0"), 3);
    EXPECT_EQ(settings.read(u"Liste0", u"Name0"), QString(254, u'v'));
    EXPECT_EQ(settings.snapshot().read(u"Liste0", u"SB0"), QStringLiteral("65280"));
    EXPECT_EQ(settings.read(u"Other", u"x"), QStringLiteral("1"));
    settings.write(u"Liste0", u"SB0", u"1");
    EXPECT_EQ(settings.read(u"Liste0", u"SB0"), QStringLiteral("1"));
}

TEST_F(GatheredSettings, TakeTheLastOfSeveralValues)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Liste0", u"SB0", u"1");
    settings.write(u"Liste0", u"SB0", u"255"); // as it stands in the file
    settings.write(u"Liste0", u"New0", u"1");
    settings.write(u"Liste0", u"New0", u"2");
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_EQ(settings.read(u"Liste0", u"SB0"), QStringLiteral("255"));
    EXPECT_EQ(settings.read(u"Liste0", u"New0"), QStringLiteral("2"));
    EXPECT_EQ(text().count("New0"), 1);
}

TEST_F(GatheredSettings, LeaveWhatAnotherProgramHasWrittenMeanwhile)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Liste0", u"SB0", u"65280");
    store(kBefore + "[Mail]\r\nTo=me\r\n");
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_EQ(settings.read(u"Mail", u"To"), QStringLiteral("me"));
    EXPECT_EQ(settings.read(u"Liste0", u"SB0"), QStringLiteral("65280"));
}

TEST_F(GatheredSettings, AreLeftOutOnceWhatTheyBelongToHasChanged)
{
    const SettingsValue url{QStringLiteral("Liste0"), QStringLiteral("URL0"),
                            QStringLiteral("http://cam/a.jpg")};
    const std::array values = {
        SettingsValue{QStringLiteral("Liste0"), QStringLiteral("SB0"), QStringLiteral("65280")}};
    ASSERT_TRUE(settings.gather());
    EXPECT_EQ(settings.write(values, url), SettingsChange::Made);
    settings.write(u"Other", u"x", u"2");
    store(QByteArray(kBefore).replace("a.jpg", "b.jpg"));
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_EQ(text(), QByteArray(kBefore).replace("a.jpg", "b.jpg").replace("x=1", "x=2"));
    EXPECT_EQ(settings.write(values, url), SettingsChange::Made);
    EXPECT_EQ(settings.read(u"Liste0", u"SB0"), QStringLiteral("255"));
}

// Of a longer one that stands in the file, a reader sees the beginning.
TEST_F(GatheredSettings, BelongToAValueAsItIsRead)
{
    store("[Liste0]\r\nURL0=" + QByteArray(300, 'a') + "\r\nSB0=255\r\n");
    const SettingsValue url{QStringLiteral("Liste0"), QStringLiteral("URL0"),
                            settings.read(u"Liste0", u"URL0")};
    const std::array values = {
        SettingsValue{QStringLiteral("Liste0"), QStringLiteral("SB0"), QStringLiteral("65280")}};
    ASSERT_TRUE(settings.gather());
    EXPECT_EQ(settings.write(values, url), SettingsChange::Made);
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_EQ(settings.read(u"Liste0", u"SB0"), QStringLiteral("65280"));
}

TEST_F(GatheredSettings, AreWrittenOneByOneAgainOnceTheyAreSettled)
{
    ASSERT_TRUE(settings.gather());
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    settings.write(u"Other", u"x", u"2");
    EXPECT_TRUE(text().contains("x=2"));
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
}

TEST_F(GatheredSettings, AreGatheredOnceAtATime)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Other", u"x", u"2");
    EXPECT_FALSE(settings.gather());
    EXPECT_EQ(settings.read(u"Other", u"x"), QStringLiteral("2"));
}

TEST_F(GatheredSettings, AreSettledBeforeAChangeThatReadsAndDecides)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Other", u"x", u"2");
    EXPECT_EQ(settings.change([](SettingsDraft &draft) {
        draft.write(u"Other", u"y", draft.read(u"Other", u"x"));
    }),
              SettingsChange::Made);
    EXPECT_TRUE(text().endsWith("[Other]\r\nx=2\r\ny=2\r\n"));
}

TEST_F(GatheredSettings, AreKnownNotToBeStoredWhereAChangeHadToSettleThem)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Other", u"x", u"long");
    {
        const FileSizeLimit full(1);
        EXPECT_EQ(settings.change([](SettingsDraft &draft) { draft.write(u"Other", u"y", u"1"); }),
                  SettingsChange::Failed);
    }
    EXPECT_EQ(settings.settle(), SettingsChange::Failed);
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
}

TEST_F(GatheredSettings, ReplaceTheFileOnlyIfALengthChanges)
{
    const ino_t before = file();
    ASSERT_TRUE(settings.gather());
    settings.write(u"Liste0", u"SB0", u"001");
    settings.write(u"Other", u"x", u"2");
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_EQ(file(), before);
    ASSERT_TRUE(settings.gather());
    settings.write(u"Liste0", u"SB0", u"65280");
    EXPECT_EQ(settings.settle(), SettingsChange::Made);
    EXPECT_NE(file(), before);
}

TEST_F(GatheredSettings, AreAsTheyWereWhereTheyCannotBeStored)
{
    ASSERT_TRUE(settings.gather());
    settings.write(u"Other", u"x", u"22");
    {
        const FileSizeLimit limit(10);
        EXPECT_EQ(settings.settle(), SettingsChange::Failed);
    }
    EXPECT_EQ(text(), kBefore);
    EXPECT_EQ(settings.read(u"Other", u"x"), QStringLiteral("1"));
}

TEST_F(GatheredSettings, AreNotGatheredForALargeFile)
{
    store(kBefore + QByteArray(1'000'001, ';'));
    EXPECT_FALSE(settings.gather());
    settings.write(u"Other", u"x", u"2");
    EXPECT_TRUE(text().contains("x=2"));
}

} // namespace
} // namespace velmora
