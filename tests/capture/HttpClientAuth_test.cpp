// Users and passwords: sent only when the server asks, and only to the server they are meant for.
#include "HttpExchange.h"
#include "capture/CameraUrl.h"

namespace velmora::test {
namespace {

using HttpClientAuth = HttpExchange;

const CameraLock kBasic{LockKind::Basic, "me", "pw"};
const CameraLock kDigest{LockKind::Digest, "me", "pw"};

TEST_F(HttpClientAuth, SendsNoPasswordUnasked)
{
    camera_.answer("/snap", picture(10));
    EXPECT_EQ(fetch(camera_.url("/snap", "me:pw@")).outcome, FetchOutcome::Arrived);
    EXPECT_EQ(onlyRequest().header("Authorization"), "");
}

TEST_F(HttpClientAuth, SendsNoPasswordUnaskedInTheOldForm)
{
    camera_.answer("/a.jpg", picture(10));
    EXPECT_EQ(fetch(camera_.url("/a.jpg", "me:pw@"), HttpForm::Http10).outcome,
              FetchOutcome::Arrived);
    EXPECT_EQ(onlyRequest().header("Authorization"), "");
}

TEST_F(HttpClientAuth, AnswersBasicWithTheUserOfTheAddress)
{
    camera_.answer("/snap", locked(picture(10), kBasic));
    const HttpReply reply = fetch(camera_.url("/snap", "me:pw@"));
    EXPECT_EQ(reply.body.whole(), jpeg(10));
    ASSERT_EQ(camera_.requests().size(), 2);
    EXPECT_EQ(camera_.requests().at(0).header("Authorization"), "");
    EXPECT_EQ(camera_.requests().at(1).header("Authorization"), "Basic bWU6cHc=");
}

TEST_F(HttpClientAuth, AnswersDigestWithTheUserOfTheAddress)
{
    camera_.answer("/snap?res=2", locked(picture(10), kDigest));
    EXPECT_EQ(fetch(camera_.url("/snap?res=2", "me:pw@")).body.whole(), jpeg(10));
    ASSERT_EQ(camera_.requests().size(), 2);
    EXPECT_EQ(camera_.requests().at(0).header("Authorization"), "");
}

TEST_F(HttpClientAuth, AnswersInTheOldFormToo)
{
    camera_.answer("/a.jpg", locked(picture(10), kBasic));
    camera_.answer("/b.jpg", locked(picture(20), kDigest));
    EXPECT_EQ(fetch(camera_.url("/a.jpg", "me:pw@"), HttpForm::Http10).body.whole(), jpeg(10));
    EXPECT_EQ(fetch(camera_.url("/b.jpg", "me:pw@"), HttpForm::Http10).body.whole(), jpeg(20));
    EXPECT_EQ(camera_.requests().last().version, "HTTP/1.0");
}

TEST_F(HttpClientAuth, DecodesUserAndPasswordOfTheAddress)
{
    camera_.answer("/snap", locked(picture(10), {LockKind::Basic, "m@e", "p:w /\xC3\xA9"}));
    const QString typed =
        QString::fromUtf8(camera_.url("/snap", "m%40e:p%3Aw %2F\xC3\xA9@")); // with a blank in it
    EXPECT_EQ(fetch(requestFor(typed, kAmpleLimit)).outcome, FetchOutcome::Arrived);
}

TEST_F(HttpClientAuth, IsAnonimousOnDemandInTheOldForm)
{
    camera_.answer("/a.JPG", locked(picture(10), {LockKind::Basic, "anonimous", ""}));
    EXPECT_EQ(fetch(camera_.url("/a.JPG"), HttpForm::Http10).body.whole(), jpeg(10));
    ASSERT_EQ(camera_.requests().size(), 2);
    EXPECT_EQ(camera_.requests().at(0).header("Authorization"), "");
    EXPECT_EQ(camera_.requests().at(1).header("Authorization"), "Basic YW5vbmltb3VzOg==");
}

TEST_F(HttpClientAuth, IsAnonimousToDigestInTheOldForm)
{
    camera_.answer("/a.JPG", locked(picture(10), {LockKind::Digest, "anonimous", ""}));
    EXPECT_EQ(fetch(camera_.url("/a.JPG"), HttpForm::Http10).body.whole(), jpeg(10));
}

TEST_F(HttpClientAuth, IsAnonimousAlsoWhenThePathHoldsAnAtSign)
{
    camera_.answer("/a@2.JPG", locked(picture(10), {LockKind::Basic, "anonimous", ""}));
    EXPECT_EQ(fetch(camera_.url("/a@2.JPG"), HttpForm::Http10).body.whole(), jpeg(10));
}

TEST_F(HttpClientAuth, NamesNoOneInTheNewForm)
{
    camera_.answer("/snap", locked(picture(10), {LockKind::Basic, "anonimous", ""}));
    EXPECT_EQ(fetch(camera_.url("/snap")).outcome, FetchOutcome::Failed);
    EXPECT_EQ(onlyRequest().header("Authorization"), "");
}

TEST_F(HttpClientAuth, FailsOnTheWrongPassword)
{
    camera_.answer("/basic", locked(picture(10), kBasic));
    camera_.answer("/digest", locked(picture(10), kDigest));
    EXPECT_EQ(fetch(camera_.url("/basic", "me:no@")).outcome, FetchOutcome::Failed);
    EXPECT_EQ(fetch(camera_.url("/digest", "me:no@")).outcome, FetchOutcome::Failed);
    EXPECT_LE(camera_.requests().size(), 4) << "the client goes on trying";
}

TEST_F(HttpClientAuth, TakesNeitherPageNorDateOfTheQuestion)
{
    camera_.answer("/snap", locked(picture(10), kBasic));
    const HttpReply reply = fetch(camera_.url("/snap", "me:pw@"));
    EXPECT_EQ(reply.body.whole(), jpeg(10));
    EXPECT_EQ(reply.lastModified, QString());
}

TEST_F(HttpClientAuth, KeepsThePasswordFromAnotherServer)
{
    LoopbackCamera other;
    other.answer("/snap", locked(picture(10), kBasic));
    camera_.answer("/snap", redirect(other.url("/snap")));
    EXPECT_EQ(fetch(camera_.url("/snap", "me:pw@")).outcome, FetchOutcome::Failed);
    ASSERT_FALSE(other.requests().isEmpty());
    for (const CameraRequest &request : other.requests()) {
        EXPECT_EQ(request.header("Authorization"), "");
    }
}

TEST_F(HttpClientAuth, KeepsThePasswordOnTheSameServer)
{
    camera_.answer("/old", redirect("/new"));
    camera_.answer("/new", locked(picture(10), kBasic));
    EXPECT_EQ(fetch(camera_.url("/old", "me:pw@")).body.whole(), jpeg(10));
}

} // namespace
} // namespace velmora::test
