// Which requests are valid, and what is in them.
#include "loopback/Request.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using loopback::parsedRequest;

TEST(LoopbackRequest, HasMethodPathVersionAndHeaders)
{
    const auto request = parsedRequest("GET /a.jpg?x=1 HTTP/1.1\r\nHost: cam:80\r\nX-Empty:");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->method, "GET");
    EXPECT_EQ(request->target, "/a.jpg?x=1");
    EXPECT_EQ(request->version, "HTTP/1.1");
    EXPECT_EQ(request->header("hOST"), "cam:80");
    EXPECT_EQ(request->header("X-Empty"), "");
    EXPECT_EQ(request->headers.size(), 2);
}

TEST(LoopbackRequest, OfTheOldVersionNeedsNoHost)
{
    EXPECT_TRUE(parsedRequest("GET / HTTP/1.0"));
    EXPECT_TRUE(parsedRequest("GET / HTTP/1.0\r\nHost: cam"));
}

TEST(LoopbackRequest, IsRefusedWhenItIsNotValid)
{
    for (const QByteArray head :
         {"", "GET", "GET /", "GET / HTTP/1.1", "GET / HTTP/1.1\r\nHost: a\r\nHost: b",
          "GET / HTTP/2\r\nHost: a", "GET / HTTP/1.0\r\nHost: a\r\nHost: b", "GET /a b HTTP/1.0",
          "G(T / HTTP/1.0", "GET / HTTP/1.0\r\nno colon", "GET / HTTP/1.0\r\na b: c",
          "GET / HTTP/1.0\r\n: c"}) {
        EXPECT_FALSE(parsedRequest(head)) << head.toStdString();
    }
}

} // namespace
} // namespace velmora::test
