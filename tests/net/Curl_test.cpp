#include "net/Curl.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace velmora::test {
namespace {

std::string troubleWith(const QString &library)
{
    try {
        static_cast<void>(loadCurl(library));
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return {};
}

TEST(Curl, NamesTheLibraryThatIsMissing)
{
    const std::string trouble = troubleWith(QStringLiteral("no-such-library"));
    EXPECT_NE(trouble.find("no-such-library"), std::string::npos) << trouble;
}

TEST(Curl, IsLoadedOnce)
{
    EXPECT_EQ(&curl(), &curl());
    EXPECT_STREQ(curl().easyStrerror(CURLE_OK), "No error");
}

} // namespace
} // namespace velmora::test
