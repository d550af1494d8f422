// The rule by which every number of the settings and of the option boxes is read.
#include "base/LeadingNumber.h"

#include <QString>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace velmora {
namespace {

struct NumberRow
{
    const char *name;
    QString text;
    double number;
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

const std::vector<NumberRow> &numbers()
{
    static const std::vector<NumberRow> rows = {
        {"plain", QStringLiteral("42"), 42},
        {"zero", QStringLiteral("0"), 0},
        {"leading zeros", QStringLiteral("007"), 7},
        {"letters behind", QStringLiteral("12abc"), 12},
        {"blank in front", QStringLiteral("  12"), 12},
        {"blank inside", QStringLiteral("1 5x"), 15},
        {"tab and line feed inside", QStringLiteral("\t1\t2\n3"), 123},
        {"plus", QStringLiteral("+5"), 5},
        {"minus", QStringLiteral("-5"), -5},
        {"blank behind the sign", QStringLiteral("- 5"), -5},
        {"sign behind the number", QStringLiteral("5-3"), 5},
        {"decimals", QStringLiteral("2.75"), 2.75},
        {"no digit before the point", QStringLiteral("-.5"), -0.5},
        {"no digit behind the point", QStringLiteral("3."), 3},
        {"second point", QStringLiteral("1.2.3"), 1.2},
        {"comma", QStringLiteral("2,7"), 2},
        {"exponent", QStringLiteral("1e3"), 1000},
        {"capital exponent", QStringLiteral("1E3x"), 1000},
        {"signed exponent", QStringLiteral("25e-1"), 2.5},
        {"plus exponent", QStringLiteral("25e+1"), 250},
        {"exponent without digits", QStringLiteral("7e"), 7},
        {"exponent with a sign only", QStringLiteral("7e-"), 7},
        {"above 32 bits", QStringLiteral("4294967296"), 4294967296.0},
        {"many digits", QStringLiteral("100000000000000000000"), 1e20},
        {"too large", QStringLiteral("1e400"), kInfinity},
        {"too large below zero", QStringLiteral("-1e400"), -kInfinity},
        {"too large by digits", QString(400, u'9'), kInfinity},
        {"too small", QStringLiteral("1e-400"), 0},
        {"zero with a large exponent", QStringLiteral("0e999"), 0},
    };
    return rows;
}

const std::vector<NumberRow> &noNumbers()
{
    static const std::vector<NumberRow> rows = {
        {"empty", QString(), 0},
        {"blanks", QStringLiteral(" \t\n "), 0},
        {"letters", QStringLiteral("abc"), 0},
        {"letters before digits", QStringLiteral("a1"), 0},
        {"plus alone", QStringLiteral("+"), 0},
        {"minus alone", QStringLiteral("-"), 0},
        {"point alone", QStringLiteral("."), 0},
        {"two minus signs", QStringLiteral("--5"), 0},
        {"plus and minus", QStringLiteral("+-5"), 0},
        {"minus and plus", QStringLiteral("-+5"), 0},
        {"two plus signs", QStringLiteral("++5"), 0},
        {"exponent alone", QStringLiteral("e5"), 0},
        {"name of infinity", QStringLiteral("inf"), 0},
        {"name of no number", QStringLiteral("nan"), 0},
        {"carriage return", QStringLiteral("\r5"), 0},
        {"no-break space", QStringLiteral("\u00a05"), 0},
        {"digits of another script", QStringLiteral("\u0665"), 0},
    };
    return rows;
}

TEST(LeadingNumber, ReadsTheNumberInFront)
{
    for (const NumberRow &row : numbers()) {
        SCOPED_TRACE(row.name);
        EXPECT_DOUBLE_EQ(leadingNumber(row.text), row.number);
    }
}

TEST(LeadingNumber, IsZeroWithoutANumberInFront)
{
    for (const NumberRow &row : noNumbers()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(leadingNumber(row.text), 0);
    }
}

TEST(LeadingNumber, HasNoNegativeZero)
{
    EXPECT_FALSE(std::signbit(leadingNumber(u"-0")));
}

} // namespace
} // namespace velmora
