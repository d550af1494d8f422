#include "net/Curl.h"

#include "support/TempTree.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora::test {
namespace {

std::string troubleWith(const QString &library)
{
    try {
        static_cast<void>(loadCurl(library));
    } catch (const NoCurl &error) {
        return error.what();
    }
    return {};
}

TEST(Curl, SaysWhatTheSystemSaysOfALibraryThatIsMissing)
{
    const std::string trouble = troubleWith(QStringLiteral("libnone.so.4"));
    EXPECT_NE(trouble.find("libnone.so.4: cannot open shared object file"), std::string::npos)
        << trouble;
}

TEST(Curl, SaysWhatTheSystemSaysOfALibraryThatIsBroken)
{
    const TempTree tree;
    tree.write(u"libcurl.so.4", {});
    const std::string trouble = troubleWith(tree.path(u"libcurl.so.4"));
    EXPECT_NE(trouble.find("file too short"), std::string::npos) << trouble;
}

TEST(Curl, SaysWhichFunctionALibraryLacks)
{
    const std::string trouble = troubleWith(QStringLiteral("libm.so.6"));
    EXPECT_NE(trouble.find("lacks curl_easy_cleanup"), std::string::npos) << trouble;
}

TEST(Curl, IsReadyForUse)
{
    EXPECT_STREQ(curl().easyStrerror(CURLE_OK), "No error");
    EXPECT_GE(curl().versionInfo(CURLVERSION_NOW)->version_num, LIBCURL_VERSION_NUM);
}

} // namespace
} // namespace velmora::test
