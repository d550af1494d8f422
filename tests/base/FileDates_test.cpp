// Dates of files in local time.
#include "base/FileDates.h"

#include "base/DateText.h"
#include "support/ScopedEnv.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <ctime>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {
namespace {

constexpr std::time_t kWinter = 1141740309; // 7 March 2006, 14:05:09 GMT
constexpr std::time_t kSummer = 1154959509; // 7 August 2006, 14:05:09 GMT

const QByteArray kUtc = "UTC0";
const QByteArray kParis = "CET-1CEST,M3.5.0,M10.5.0/3";
const QByteArray kIndia = "IST-5:30";
const QByteArray kNewYork = "EST5EDT,M3.2.0,M11.1.0";

class FileDate : public testing::Test
{
protected:
    ~FileDate() override
    {
        zone_.reset();
        ::tzset();
    }

    void goTo(const QByteArray &zone)
    {
        zone_.emplace("TZ", zone);
        ::tzset();
    }

    [[nodiscard]] QByteArray file(std::time_t modified) const
    {
        tree_.write(u"image.jpg", "x");
        const QByteArray path = QFile::encodeName(tree_.path(u"image.jpg"));
        const timespec times[] = {{0, 0}, {modified, 999999999}};
        EXPECT_EQ(::utimensat(AT_FDCWD, path.constData(), times, 0), 0);
        return path;
    }

    TempTree tree_;

private:
    std::optional<ScopedEnv> zone_;
};

struct DateRow
{
    const char *name;
    QByteArray zone;
    std::time_t modified;
    QString expected;
};

void PrintTo(const DateRow &row, std::ostream *out)
{
    *out << row.name;
}

class ModificationTime : public FileDate, public testing::WithParamInterface<DateRow>
{
};

TEST_P(ModificationTime, IsLocalTime)
{
    goTo(GetParam().zone);
    const std::optional<WallTime> date = modificationTime(file(GetParam().modified));
    ASSERT_TRUE(date.has_value());
    EXPECT_EQ(dateText(*date), GetParam().expected);
}

const DateRow kDates[] = {
    {"Gmt", kUtc, kWinter, QStringLiteral("07/03/2006 14:05:09")},
    {"EastInWinter", kParis, kWinter, QStringLiteral("07/03/2006 15:05:09")},
    {"EastInSummer", kParis, kSummer, QStringLiteral("07/08/2006 16:05:09")},
    {"HalfAnHour", kIndia, kWinter, QStringLiteral("07/03/2006 19:35:09")},
    {"WestInSummer", kNewYork, kSummer, QStringLiteral("07/08/2006 10:05:09")},
    {"NextDay", kIndia, kWinter + 5L * 3600, QStringLiteral("08/03/2006 00:35:09")},
    {"DayBefore", kNewYork, kWinter - 10L * 3600, QStringLiteral("06/03/2006 23:05:09")},
    {"Epoch", kUtc, 0, QStringLiteral("01/01/1970 00:00:00")},
    {"BeforeTheEpoch", kUtc, -1, QStringLiteral("31/12/1969 23:59:59")},
};

INSTANTIATE_TEST_SUITE_P(FileDates, ModificationTime, testing::ValuesIn(kDates),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(FileDate, OfALinkIsThatOfItsFile)
{
    goTo(kUtc);
    const QByteArray link = QFile::encodeName(tree_.path(u"link.jpg"));
    ASSERT_EQ(::symlink(file(kSummer).constData(), link.constData()), 0);
    const std::optional<WallTime> date = modificationTime(link);
    ASSERT_TRUE(date.has_value());
    EXPECT_EQ(dateText(*date), QStringLiteral("07/08/2006 14:05:09"));
}

TEST_F(FileDate, TakesNamesThatAreNoUtf8)
{
    goTo(kUtc);
    const QByteArray strange = QFile::encodeName(tree_.path()) + "/caf\xE9";
    ASSERT_EQ(::rename(file(kWinter).constData(), strange.constData()), 0);
    EXPECT_TRUE(modificationTime(strange).has_value());
    EXPECT_EQ(::unlink(strange.constData()), 0); // the temporary tree could not
}

TEST_F(FileDate, IsNothingWithoutTheFile)
{
    EXPECT_FALSE(modificationTime(QFile::encodeName(tree_.path(u"none.jpg"))).has_value());
    EXPECT_FALSE(modificationTime(QByteArray()).has_value());
}

TEST_F(FileDate, AFileWasMadeWhenItCameAndNotWhenItWasChanged)
{
    goTo(kUtc);
    const std::time_t before = std::time(nullptr) - 1; // file systems keep coarse times
    const QByteArray path = file(kWinter);
    const auto made = creationTime(path);
    ASSERT_TRUE(made);
    EXPECT_GE(made->time_since_epoch().count(), before);
    EXPECT_LE(made->time_since_epoch().count(), std::time(nullptr));
    EXPECT_NE(made, modificationTime(path));
}

TEST_F(FileDate, TheCreationIsInLocalTimeToo)
{
    const QByteArray path = file(kWinter);
    goTo(kUtc);
    const auto utc = creationTime(path);
    goTo(kIndia);
    const auto india = creationTime(path);
    ASSERT_TRUE(utc && india);
    EXPECT_EQ(*india - *utc, std::chrono::minutes{330});
}

TEST_F(FileDate, WithoutADateOfCreationTheModificationCounts)
{
    goTo(kUtc);
    const QByteArray path = "/proc/version"; // this date is not kept there
    EXPECT_TRUE(creationTime(path));
    EXPECT_EQ(creationTime(path), modificationTime(path));
}

TEST_F(FileDate, OfALinkTheFilesCreationCounts)
{
    goTo(kUtc);
    const QByteArray link = QFile::encodeName(tree_.path(u"link"));
    ASSERT_EQ(::symlink("/proc/version", link.constData()), 0);
    EXPECT_EQ(creationTime(link), modificationTime("/proc/version"));
}

TEST_F(FileDate, WhatIsNotThereWasNeverMade)
{
    EXPECT_FALSE(creationTime(QFile::encodeName(tree_.path(u"nothing"))));
}

} // namespace
} // namespace velmora::test
