// Redirects: followed within http and https, ten at most.
#include "HttpExchange.h"

namespace velmora::test {
namespace {

class HttpClientRedirect : public HttpExchange
{
protected:
    /// "/0" leads through that many redirects to a picture.
    QByteArray chain(int length)
    {
        for (int i = 0; i < length; ++i) {
            camera_.answer('/' + QByteArray::number(i), redirect('/' + QByteArray::number(i + 1)));
        }
        camera_.answer('/' + QByteArray::number(length), picture(10));
        return camera_.url("/0");
    }
};

TEST_F(HttpClientRedirect, IsFollowed)
{
    camera_.answer("/old", redirect(camera_.url("/new")));
    camera_.answer("/new", picture(10));
    const HttpReply reply = fetch(camera_.url("/old"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Arrived);
    EXPECT_EQ(reply.body.whole(), jpeg(10));
}

TEST_F(HttpClientRedirect, IsFollowedInTheOldForm)
{
    camera_.answer("/old.jpg", redirect("/new.jpg"));
    camera_.answer("/new.jpg", picture(10));
    EXPECT_EQ(fetch(camera_.url("/old.jpg"), HttpForm::Http10).body.whole(), jpeg(10));
    EXPECT_EQ(camera_.requests().last().version, "HTTP/1.0");
}

TEST_F(HttpClientRedirect, LeadsUpFromTheFolderOfTheAddress)
{
    camera_.answer("/cgi/bin/old", redirect("../new"));
    camera_.answer("/cgi/new", picture(10));
    EXPECT_EQ(fetch(camera_.url("/cgi/bin/old")).body.whole(), jpeg(10));
}

// Which servers may refuse, for fear of being led out of their folder.
TEST_F(HttpClientRedirect, AsksForNoDotsThatItsTargetHas)
{
    camera_.answer("/cgi/new", picture(10));
    for (const QByteArray target : {"bin/../new", "/bin/.././cgi/new", "././new"}) {
        camera_.answer("/cgi/old", redirect(target));
        EXPECT_EQ(fetch(camera_.url("/cgi/old")).body.whole(), jpeg(10)) << target.toStdString();
    }
}

TEST_F(HttpClientRedirect, LeadsToAnotherServer)
{
    LoopbackCamera other;
    other.answer("/new", picture(10));
    camera_.answer("/old", redirect(other.url("/new")));
    EXPECT_EQ(fetch(camera_.url("/old")).body.whole(), jpeg(10));
}

TEST_F(HttpClientRedirect, IsFollowedTenTimes)
{
    EXPECT_EQ(fetch(chain(10)).body.whole(), jpeg(10));
    EXPECT_EQ(camera_.requests().size(), 11);
}

TEST_F(HttpClientRedirect, IsNotFollowedAnEleventhTime)
{
    EXPECT_EQ(fetch(chain(11)).outcome, FetchOutcome::Failed);
    EXPECT_EQ(camera_.requests().size(), 11);
}

TEST_F(HttpClientRedirect, EndsInALoop)
{
    camera_.answer("/loop", redirect("/loop"));
    const HttpReply reply = fetch(camera_.url("/loop"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(reply.failure.isEmpty());
    EXPECT_EQ(camera_.requests().size(), 11);
}

TEST_F(HttpClientRedirect, GivesTheDateOfTheLastResponse)
{
    camera_.answer("/old", redirect("/new", "Last-Modified: Sat, 01 Jan 2000 00:00:00 GMT\r\n"));
    camera_.answer("/new", picture(10, "Last-Modified: Tue, 07 Mar 2006 14:05:09 GMT\r\n"));
    EXPECT_EQ(fetch(camera_.url("/old")).lastModified,
              QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"));
}

TEST_F(HttpClientRedirect, GivesNoDateWhenTheLastResponseHasNone)
{
    camera_.answer("/old", redirect("/new", "Last-Modified: Sat, 01 Jan 2000 00:00:00 GMT\r\n"));
    camera_.answer("/new", picture(10));
    EXPECT_EQ(fetch(camera_.url("/old")).lastModified, QString());
}

class HttpClientRedirectTo : public HttpExchange, public testing::WithParamInterface<const char *>
{
};

TEST_P(HttpClientRedirectTo, AnotherSchemeIsRefused)
{
    camera_.answer("/old", redirect(GetParam()));
    const HttpReply reply = fetch(camera_.url("/old"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(reply.failure.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(HttpClient, HttpClientRedirectTo,
                         testing::Values("file:///etc/hostname", "ftp://127.0.0.1/a",
                                         "gopher://127.0.0.1/a", "dict://127.0.0.1/a",
                                         "data:image/jpeg,x", "FILE:///etc/hostname"));

TEST_F(HttpClientRedirect, WithoutATargetIsAFailure)
{
    camera_.answer("/old", response("302 Found", {}, jpeg(5000)));
    EXPECT_EQ(fetch(camera_.url("/old")).outcome, FetchOutcome::Failed);
}

} // namespace
} // namespace velmora::test
