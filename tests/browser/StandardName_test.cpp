// Names of captured images as numbers.
#include "browser/StandardName.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <array>

namespace velmora {
namespace {

QByteArray text(const StandardName &name)
{
    std::array<char, kLongestDigits> digits = {};
    const qsizetype length = writeDigits(name.digits, digits.data());
    return QByteArray(digits.data(), length) + name.suffix.toByteArray();
}

struct NameRow
{
    const char *what;
    QByteArray name;
    QByteArray suffix;
};

class StandardNameTable : public testing::TestWithParam<NameRow>
{
};

TEST_P(StandardNameTable, IsTakenApartAndPutTogether)
{
    const auto name = standardName(GetParam().name);
    ASSERT_TRUE(name.has_value());
    EXPECT_EQ(name->suffix.toByteArray(), GetParam().suffix);
    EXPECT_LT(name->digits, quint64{1} << 60U);
    EXPECT_EQ(text(*name), GetParam().name);
}

const NameRow kStandard[] = {
    {"Usual", "20061005_1230450512.jpg", ".jpg"},
    {"WithoutDot", "20061005_1230450512jpg", "jpg"},
    {"WithoutSuffix", "20061005_1230450512", ""},
    {"SuffixOfDigits", "20061005_12304505123", "3"},
    {"Least", "00000000_0000000000.jpg", ".jpg"},
    {"Greatest", "99999999_9999999999.jpg", ".jpg"},
    {"NoSuchDay", "29990231_1230450512.jpg", ".jpg"},
    {"Older", "20061005_123045.jpg", ".jpg"},
    {"OlderShortest", "20061005_123045.", "."},
    {"OlderGreatest", "99999999_999999.jpg", ".jpg"},
    {"OlderWithDigitsBehindTheDot", "20061005_123045.1234567", ".1234567"},
    {"EachDigitItsOwn", "12345678_9012345678.jpg", ".jpg"},
};
INSTANTIATE_TEST_SUITE_P(Standard, StandardNameTable, testing::ValuesIn(kStandard),
                         [](const auto &row) { return row.param.what; });

TEST(StandardName, TakesNoOtherForm)
{
    const QByteArray names[] = {
        "",
        "2",
        "20061005",
        "20061005_",
        "20061005_123045",
        "20061005_123045jpg",
        "20061005_1230450.jpg",
        "20061005_12304505.jpg",
        "20061005_123045051.jpg",
        "20061005-1230450512.jpg",
        "2006100512304505120.jpg",
        "2006100a_1230450512.jpg",
        "/0061005_1230450512.jpg",
        "20061005_:230450512.jpg",
        "20061005_123045051x.jpg",
        "20061005_12304505x2.jpg",
        "20061005_12304x.jpg",
        "20061005_x23045.jpg",
        "2006100\xB5_1230450512.jpg",
        "20061005_1230450512_2.jpg",
        "20061005_123045._jpg",
    };
    for (const QByteArray &name : names) {
        EXPECT_FALSE(standardName(name).has_value()) << name.constData();
    }
}

TEST(StandardName, NumbersAreInTheOrderOfTheNames)
{
    const QByteArray names[] = {"20061005_123045.jpg",     "20061005_1230450000.jpg",
                                "20061005_1230450001.jpg", "20061005_1230459999.jpg",
                                "20061005_123046.jpg",     "20061006_000000.jpg"};
    quint64 before = 0;
    for (const QByteArray &name : names) {
        const auto standard = standardName(name);
        ASSERT_TRUE(standard.has_value());
        EXPECT_GT(standard->digits, before) << name.constData();
        before = standard->digits;
    }
}

} // namespace
} // namespace velmora
