// The settings file as the program reads and writes it: texts, numbers, and a snapshot.
#include "settings/SettingsFile.h"

#include "settings/Numbers.h"
#include "settings/SettingsFaults.h"
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <vector>

namespace velmora {
namespace {

using test::TempTree;

class SettingsFileTest : public testing::Test
{
protected:
    void store(const QByteArray &text) const { tree.write(u"Velmora.ini", text); }

    [[nodiscard]] QByteArray text() const { return tree.read(u"Velmora.ini"); }

    TempTree tree;
    SettingsFile settings{tree.path()};
};

TEST_F(SettingsFileTest, StandsInTheProgramFolder)
{
    EXPECT_EQ(settings.path(), tree.path(u"Velmora.ini"));
    EXPECT_EQ(settings.programFolder(), tree.path());
}

TEST_F(SettingsFileTest, ReadsAnEmptyTextForWhatIsMissing)
{
    EXPECT_EQ(settings.read(u"Control", u"StRep"), QString());
    store("[Control]\r\nDebug=1\r\n");
    EXPECT_EQ(settings.read(u"Control", u"StRep"), QString());
    EXPECT_EQ(settings.read(u"Liste0", u"Debug"), QString());
}

TEST_F(SettingsFileTest, ReadsWhatAnotherProgramHasJustWritten)
{
    store("[Control]\r\nTempo=1\r\n");
    EXPECT_EQ(settings.read(u"Control", u"Tempo"), QStringLiteral("1"));
    store("[Control]\r\nTempo=22\r\n");
    EXPECT_EQ(settings.read(u"Control", u"Tempo"), QStringLiteral("22"));
}

TEST_F(SettingsFileTest, CutsAValueTo254Characters)
{
    for (const qsizetype length : {253, 254, 255, 300}) {
        SCOPED_TRACE(length);
        store("[s]\r\nk=" + QByteArray(length, 'v') + "\r\n");
        EXPECT_EQ(ReadINI(u"s", u"k", settings.path()),
                  QString(qMin<qsizetype>(length, 254), u'v'));
    }
}

TEST_F(SettingsFileTest, ComparesNamesWithoutCase)
{
    store("[CONTROL]\r\nfCine.left=12\r\n");
    EXPECT_EQ(settings.read(u"Control", u"fCine.Left"), QStringLiteral("12"));
    settings.write(u"control", u"FCINE.LEFT", u"13");
    EXPECT_EQ(text(), QByteArray("[CONTROL]\r\nfCine.left=13\r\n"));
}

TEST_F(SettingsFileTest, MakesFileSectionAndKeyOnDemand)
{
    settings.write(u"Control", u"Debug", u"1");
    EXPECT_EQ(text(), QByteArray("[Control]\r\nDebug=1\r\n"));
    settings.write(u"Control", u"TIO", u"5");
    settings.write(u"Liste0", u"LstAct", 1);
    EXPECT_EQ(text(), QByteArray("[Control]\r\nDebug=1\r\nTIO=5\r\n[Liste0]\r\nLstAct=1\r\n"));
}

TEST_F(SettingsFileTest, WritesNumbersWithoutALeadingBlank)
{
    settings.write(u"s", u"a", 0);
    settings.write(u"s", u"b", -12);
    settings.write(u"s", u"c", Q_INT64_C(4294967296));
    EXPECT_EQ(text(), QByteArray("[s]\r\na=0\r\nb=-12\r\nc=4294967296\r\n"));
}

TEST_F(SettingsFileTest, StoresTextInTheAnsiCodePage)
{
    settings.write(u"s", u"k", u"caf\u00e9 \u20ac \u0100");
    EXPECT_EQ(text(), QByteArray("[s]\r\nk=caf\xe9 \x80 ?\r\n"));
    EXPECT_EQ(settings.read(u"s", u"k"), QStringLiteral("caf\u00e9 \u20ac ?"));
}

TEST_F(SettingsFileTest, StoresTheFirstOfSeveralLines)
{
    settings.write(u"s", u"a", u"one\r\n[Control]\r\nStRep=D:\\");
    settings.write(u"s", u"b", u"two\nthree");
    settings.write(u"s", u"c", QStringView(u"four\0five", 9));
    settings.write(u"s", u"d", u"\nsix");
    EXPECT_EQ(text(), QByteArray("[s]\r\na=one\r\nb=two\r\nc=four\r\nd=\r\n"));
}

TEST_F(SettingsFileTest, IsSilentAboutAWriteThatFails)
{
    store("[s]\r\nk=old\r\n");
    ASSERT_EQ(::chmod(QFile::encodeName(settings.path()).constData(), 0444), 0);
    EXPECT_NO_THROW(settings.write(u"s", u"k", u"longer"));
    EXPECT_EQ(text(), QByteArray("[s]\r\nk=old\r\n"));
}

TEST_F(SettingsFileTest, IsSilentAboutAMissingFolder)
{
    EXPECT_NO_THROW(WriteINI(u"s", u"k", u"v", tree.path(u"missing/Velmora.ini")));
    EXPECT_FALSE(tree.exists(u"missing"));
    EXPECT_EQ(ReadINI(u"s", u"k", tree.path(u"missing/Velmora.ini")), QString());
}

TEST_F(SettingsFileTest, TakesAFolderOfItsNameForAnEmptyFile)
{
    tree.makeFolder(u"Velmora.ini");
    EXPECT_EQ(settings.read(u"s", u"k"), QString());
    EXPECT_NO_THROW(settings.write(u"s", u"k", u"v"));
    EXPECT_TRUE(QFileInfo(settings.path()).isDir());
}

struct NumberRow
{
    const char *stored;
    double number;
};

TEST_F(SettingsFileTest, ReadsTheLeadingNumber)
{
    const std::vector<NumberRow> rows = {{"12", 12},   {"12abc", 12}, {"abc", 0},    {"", 0},
                                         {"2.5", 2.5}, {"-3", -3},    {"\" 7 \"", 7}};
    for (const NumberRow &row : rows) {
        SCOPED_TRACE(row.stored);
        store(QByteArray("[s]\r\nk=") + row.stored + "\r\n");
        EXPECT_DOUBLE_EQ(settings.number(u"s", u"k"), row.number);
        EXPECT_DOUBLE_EQ(settings.snapshot().number(u"s", u"k"), row.number);
    }
}

TEST_F(SettingsFileTest, RoundsToWholeNumbers)
{
    store("[s]\r\na=2.5\r\nb=3.5x\r\n");
    EXPECT_EQ(settings.int16(u"s", u"a"), 2);
    EXPECT_EQ(settings.int32(u"s", u"b"), 4);
    EXPECT_EQ(settings.int32(u"s", u"missing"), 0);
}

TEST_F(SettingsFileTest, NamesSectionKeyAndValueOfANumberOutOfRange)
{
    store("[Control]\r\nSelecteur=40000%1\r\n");
    EXPECT_EQ(settings.int32(u"Control", u"Selecteur"), 40000);
    try {
        static_cast<void>(settings.int16(u"Control", u"Selecteur"));
        FAIL() << "40000 was taken for a 16-bit number";
    } catch (const OverflowError &error) {
        EXPECT_EQ(
            QString::fromUtf8(error.what()),
            QStringLiteral(
                "Overflow: [Control] Selecteur=40000%1 in the settings file is out of range"));
    }
}

TEST_F(SettingsFileTest, RefusesANumberBeyond32Bits)
{
    store("[s]\r\na=2147483648\r\nb=1e400\r\n");
    EXPECT_THROW(static_cast<void>(settings.int32(u"s", u"a")), OverflowError);
    EXPECT_THROW(static_cast<void>(settings.int32(u"s", u"b")), OverflowError);
}

TEST_F(SettingsFileTest, GivesAViewOfOneMoment)
{
    store("[s]\r\nk=before\r\n");
    const SettingsSnapshot moment = settings.snapshot();
    settings.write(u"s", u"k", u"after");
    settings.write(u"s", u"new", u"1");
    EXPECT_EQ(moment.read(u"s", u"k"), QStringLiteral("before"));
    EXPECT_EQ(moment.read(u"s", u"new"), QString());
    EXPECT_EQ(settings.snapshot().read(u"s", u"k"), QStringLiteral("after"));
}

TEST_F(SettingsFileTest, ViewsAMissingFileAsAnEmptyOne)
{
    EXPECT_EQ(settings.snapshot().read(u"s", u"k"), QString());
    EXPECT_EQ(settings.snapshot().number(u"s", u"k"), 0);
}

TEST_F(SettingsFileTest, ViewsEveryValueAsItReadsIt)
{
    store("[s]\r\na= ' quoted ' \r\nb=" + QByteArray(300, 'v') + "\r\nc=caf\xe9\r\n[S]\r\nd=1\r\n");
    const SettingsSnapshot moment = settings.snapshot();
    for (const char16_t *const key : {u"a", u"b", u"c", u"d"}) {
        SCOPED_TRACE(QString::fromUtf16(key).toStdString());
        EXPECT_EQ(moment.read(u"S", key), settings.read(u"S", key));
    }
    EXPECT_EQ(moment.read(u"s", u"b").size(), 254);
}

TEST_F(SettingsFileTest, MakesTheFileForTheUserAlone)
{
    for (const mode_t mask : {mode_t{022}, mode_t{0}, mode_t{0777}}) {
        const mode_t before = ::umask(mask);
        settings.write(u"s", u"k", u"v");
        ::umask(before);
        struct stat info = {};
        ASSERT_EQ(::stat(QFile::encodeName(settings.path()).constData(), &info), 0);
        EXPECT_EQ(info.st_mode & 0777, 0600U);
        ASSERT_TRUE(QFile::remove(settings.path()));
    }
}

TEST_F(SettingsFileTest, WarnsOfAFileBeyondAllMeasure)
{
    tree.write(u"Velmora.ini", QByteArray(1'000'000, ';'));
    EXPECT_EQ(sizeWarning(settings), std::nullopt);
    tree.write(u"Velmora.ini", QByteArray(2'500'000, ';') + "\n[s]\nk=v\n");
    const QString warning = sizeWarning(settings).value_or(QString());
    EXPECT_TRUE(warning.contains(settings.path())) << warning.toStdString();
    EXPECT_TRUE(warning.contains(QStringLiteral("2.5 MB"))) << warning.toStdString();
    EXPECT_EQ(settings.read(u"s", u"k"), QStringLiteral("v"));
    EXPECT_EQ(settings.snapshot().read(u"s", u"k"), QStringLiteral("v"));
}

TEST_F(SettingsFileTest, ReadsAFileOfAnySizeButChangesNoneAboveSixteenMegabytes)
{
    const QByteArray large =
        "[s]\r\nk=old\r\n" + QByteArray(qsizetype{17} * 1024 * 1024, ';') + "\r\n";
    store(large);
    settings.write(u"s", u"k", u"new");
    EXPECT_TRUE(text() == large);
    EXPECT_EQ(settings.read(u"s", u"k"), QStringLiteral("old"));
    const QString warning = sizeWarning(settings).value_or(QString());
    EXPECT_TRUE(warning.contains(QStringLiteral("no change of a setting is stored")));
}

TEST_F(SettingsFileTest, SaysThatNothingIsReadOfAFileThatCannotBeSettings)
{
    store("[s]\r\nk=old\r\n");
    ASSERT_TRUE(QFile::resize(settings.path(), qint64{1} << 40)); // all holes
    EXPECT_EQ(settings.read(u"s", u"k"), QString());
    const QString warning = sizeWarning(settings).value_or(QString());
    EXPECT_TRUE(warning.contains(QStringLiteral("nothing of it is read")));
}

} // namespace
} // namespace velmora
