// The program's own libraries: where they are found, and what is said of those that are not.
#include "base/OwnLibrary.h"

#include <QCoreApplication>
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

TEST(OwnLibrary, SaysWhichLibraryIsMissing)
{
    EXPECT_TRUE(faultOf(QStringLiteral("libvelmora-none.so"), kFunction)
                    .startsWith(QStringLiteral("libvelmora-none.so is neither in ")));
}

TEST(OwnLibrary, SaysWhichFunctionIsMissing)
{
    EXPECT_TRUE(faultOf(kLibrary, "velmoraNone").contains(QStringLiteral("velmoraNone")));
}

// A program that was copied into a folder next to those of others finds theirs there.
TEST(OwnLibrary, OfAStrangerIsNotRun)
{
    const QString name = QStringLiteral("libvelmora-strange.so");
    const QString folder = QCoreApplication::applicationDirPath();
    const QString strange = folder + u'/' + name;
    const auto remove = qScopeGuard([&strange] { QFile::remove(strange); });
    ASSERT_TRUE(QFile::copy(folder + QStringLiteral("/../lib/") + kLibrary, strange));
    if (::geteuid() == 0) { // no one else can give a file away
        constexpr uid_t kStranger = 65534;
        const QByteArray native = QFile::encodeName(strange);
        ASSERT_EQ(::chown(native.constData(), kStranger, kStranger), 0);
        EXPECT_FALSE(faultOf(name, kFunction).isEmpty());
        ASSERT_EQ(::chown(native.constData(), ::geteuid(), ::getegid()), 0);
    }
    EXPECT_EQ(faultOf(name, kFunction), QString());
}

} // namespace
} // namespace velmora::test
