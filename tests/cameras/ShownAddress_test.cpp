// A camera's address in readable form.
#include "cameras/ShownAddress.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct AddressRow
{
    const char *name;
    QString given;
    QString expected;
};

void PrintTo(const AddressRow &row, std::ostream *out)
{
    *out << row.given.toStdString();
}

class ShownAddress : public testing::TestWithParam<AddressRow>
{
};

TEST_P(ShownAddress, BeginsWithWhatTellsCamerasApart)
{
    EXPECT_EQ(shownAddress(GetParam().given), GetParam().expected);
}

const AddressRow kAddresses[] = {
    {"Http", QStringLiteral("http://10.0.0.5/a.jpg"), QStringLiteral("10.0.0.5/a.jpg")},
    {"Https", QStringLiteral("https://h/a.cgi"), QStringLiteral("h/a.cgi")},
    {"AnyCase", QStringLiteral("HTTP://H/A.JPG"), QStringLiteral("H/A.JPG")},
    {"NoScheme", QStringLiteral("h/a.jpg"), QStringLiteral("h/a.jpg")},
    {"Rtsp", QStringLiteral("rtsp://h:554/a"), QStringLiteral("h:554/a")},
    {"Rtsps", QStringLiteral("RTSPS://h/a"), QStringLiteral("h/a")},
    {"OtherScheme", QStringLiteral("ftp://h/a"), QStringLiteral("ftp://h/a")},
    {"SchemeInThePath", QStringLiteral("http://h/x/http://g"), QStringLiteral("h/x/http://g")},
    {"SchemeAlone", QStringLiteral("http://"), QString()},
    {"Empty", QString(), QString()},
};

INSTANTIATE_TEST_SUITE_P(Addresses, ShownAddress, testing::ValuesIn(kAddresses),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(ShownAddressTest, ShowsNoPassword)
{
    const QString shown = shownAddress(QStringLiteral("http://me:geheim@h/a.jpg?pwd=geheim2"));
    EXPECT_FALSE(shown.contains(QStringLiteral("geheim"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QStringLiteral("h/a.jpg"))) << shown.toStdString();
}

} // namespace
} // namespace velmora::test
