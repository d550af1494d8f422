// The program's own libraries: where they are found, and what is said of those that are not.
#include "base/OwnLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include <gtest/gtest.h>

#include <unistd.h>

namespace velmora::test {
namespace {

using Number = int (*)();

const QString kLibrary = QStringLiteral("libvelmora-one-function.so");
const char *const kFunction = "velmoraTestNumber";

QString faultOf(const QString &library, const char *function)
{
    try {
        static_cast<void>(libraryFunction(library, function));
    } catch (const NoLibrary &fault) {
        return QString::fromLocal8Bit(fault.what());
    }
    return {};
}

TEST(OwnLibrary, IsFoundWhereItWasBuilt)
{
    const auto number = reinterpret_cast<Number>(libraryFunction(kLibrary, kFunction));
    EXPECT_EQ(number(), 42);
}

TEST(OwnLibrary, IsLookedForBesideTheProgramFirst)
{
    const QStringList folders = libraryFolders(QStringLiteral("/opt/cams/bin"));
    EXPECT_EQ(folders.value(0), QStringLiteral("/opt/cams/bin"));
    EXPECT_EQ(folders.value(1), QStringLiteral("/opt/cams/bin/../lib"));
    EXPECT_TRUE(folders.contains(QStringLiteral("/opt/cams/bin/../lib/velmora/parts")));
    EXPECT_TRUE(folders.contains(QStringLiteral("/usr/lib/velmora/parts")));
}

// Neighbours of a copy in a folder of all users may be anyone's.
TEST(OwnLibrary, IsLookedForInNeighboursOfAFolderOfProgramsOnly)
{
    const QStringList folders = libraryFolders(QStringLiteral("/tmp/cams"));
    EXPECT_EQ(folders.value(0), QStringLiteral("/tmp/cams"));
    EXPECT_TRUE(folders.filter(QStringLiteral("..")).isEmpty());
}

// Otherwise the current folder would be one of them.
TEST(OwnLibrary, IsLookedForInFixedFoldersWhenThatOfTheProgramIsNotKnown)
{
    const QStringList folders = libraryFolders(QString());
    EXPECT_FALSE(folders.isEmpty());
    for (const QString &folder : folders) {
        EXPECT_TRUE(folder.startsWith(u'/')) << folder.toStdString();
    }
}

TEST(OwnLibrary, SaysWhichLibraryIsMissing)
{
    EXPECT_TRUE(faultOf(QStringLiteral("libvelmora-none.so"), kFunction)
                    .startsWith(QStringLiteral("libvelmora-none.so is neither ")));
}

TEST(OwnLibrary, SaysWhichFunctionIsMissing)
{
    EXPECT_TRUE(faultOf(kLibrary, "velmoraNone").contains(QStringLiteral("velmoraNone")));
}

class LibraryBeside : public testing::Test
{
protected:
    const QString folder_ = QCoreApplication::applicationDirPath();
    const QString built_ = folder_ + QStringLiteral("/../lib/") + kLibrary;

    ~LibraryBeside() override { QFile::remove(beside(kStrange)); }

    [[nodiscard]] QString beside(const QString &name) const { return folder_ + u'/' + name; }

    static constexpr uid_t kStranger = 65534;
    const QString kStrange = QStringLiteral("libvelmora-strange.so");
};

TEST_F(LibraryBeside, IsPassedOverWhenItCannotBeLoaded)
{
    const QString broken = beside(kLibrary);
    const auto remove = qScopeGuard([&broken] { QFile::remove(broken); });
    ASSERT_TRUE(QFile::copy(QCoreApplication::applicationFilePath(), broken));
    EXPECT_EQ(faultOf(kLibrary, kFunction), QString());
    ASSERT_TRUE(QFile::remove(broken));
    ASSERT_TRUE(QDir().mkdir(broken));
    const auto removeFolder = qScopeGuard([&broken] { QDir().rmdir(broken); });
    EXPECT_EQ(faultOf(kLibrary, kFunction), QString());
}

// A program that was copied into a folder next to those of others finds theirs there.
TEST_F(LibraryBeside, OfAStrangerIsNotRun)
{
    ASSERT_TRUE(QFile::copy(built_, beside(kStrange)));
    if (::geteuid() == 0) { // no one else can give a file away
        const QByteArray native = QFile::encodeName(beside(kStrange));
        ASSERT_EQ(::chown(native.constData(), kStranger, kStranger), 0);
        EXPECT_FALSE(faultOf(kStrange, kFunction).isEmpty());
        ASSERT_EQ(::chown(native.constData(), ::geteuid(), ::getegid()), 0);
    }
    EXPECT_EQ(faultOf(kStrange, kFunction), QString());
}

// It could lead to the user's own file while it is judged and elsewhere when it is loaded.
TEST_F(LibraryBeside, IsNotRunThroughAStrangersLink)
{
    ASSERT_TRUE(QFile::link(built_, beside(kStrange)));
    if (::geteuid() == 0) {
        const QByteArray native = QFile::encodeName(beside(kStrange));
        ASSERT_EQ(::lchown(native.constData(), kStranger, kStranger), 0);
        EXPECT_FALSE(faultOf(kStrange, kFunction).isEmpty());
        ASSERT_EQ(::lchown(native.constData(), ::geteuid(), ::getegid()), 0);
    }
    EXPECT_EQ(faultOf(kStrange, kFunction), QString());
}

} // namespace
} // namespace velmora::test
