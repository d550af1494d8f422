// Every way in which a camera can fail, each with a reason for the user that never contains a
// password.
#include "HttpExchange.h"

#include <functional>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

struct FailureRow
{
    const char *name;
    std::function<CameraAnswer()> answer;
};

void PrintTo(const FailureRow &row, std::ostream *out)
{
    *out << row.name;
}

CameraAnswer status(const QByteArray &line)
{
    return response(line, {}, jpeg(5000));
}

CameraAnswer bytes(const QByteArray &text)
{
    CameraAnswer answer;
    answer.bytes = text;
    return answer;
}

class HttpClientFailure : public HttpExchange, public testing::WithParamInterface<FailureRow>
{
protected:
    void expectFailure(HttpForm form)
    {
        camera_.answer("/a.jpg", GetParam().answer());
        const HttpReply reply =
            fetch(HttpRequest{camera_.url("/a.jpg", "alice:s3cret@"), form, 300ms});
        EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
        EXPECT_FALSE(reply.failure.isEmpty());
        EXPECT_FALSE(reply.failure.contains(QStringLiteral("alice")));
        EXPECT_FALSE(reply.failure.contains(QStringLiteral("s3cret")));
    }
};

TEST_P(HttpClientFailure, HasAReasonWithoutCredentials)
{
    expectFailure(HttpForm::AsWritten);
}

TEST_P(HttpClientFailure, HasAReasonWithoutCredentialsInTheOldForm)
{
    expectFailure(HttpForm::Http10);
}

const FailureRow kFailures[] = {
    {"NotFound", [] { return status("404 Not Found"); }},
    {"Forbidden", [] { return status("403 Forbidden"); }},
    {"WrongPassword", [] { return locked(picture(5000), {LockKind::Basic, "bob", "x"}); }},
    {"WrongDigestPassword", [] { return locked(picture(5000), {LockKind::Digest, "bob", "x"}); }},
    {"ServerError", [] { return status("500 Internal Server Error"); }},
    {"Busy", [] { return status("503 Service Unavailable"); }},
    {"NotModified", [] { return bytes("HTTP/1.1 304 Not Modified\r\n\r\n"); }},
    {"ManyChoices", [] { return status("300 Multiple Choices"); }},
    {"Silence", [] { return silence(); }},
    {"HangUp", [] { return hangUp(); }},
    {"CutInTheBody", [] { return pictureDeclared(3000, 5000); }},
    {"ABodyOneByteShort", [] { return pictureDeclared(4999, 5000); }},
    {"NothingOfTheBody", [] { return pictureDeclared(0, 5000); }},
    {"CutInAChunk",
     [] { return bytes("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2000\r\nxxxx"); }},
    {"WithoutTheLastChunk",
     [] { return bytes("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nxxxx\r\n"); }},
    {"NoHttpAtAll", [] { return bytes("220 welcome to the mail server\r\n"); }},
    {"APictureWithoutHeaders", [] { return bytes(jpeg(5000)); }},
    {"RedirectLoop", [] { return redirect("/a.jpg"); }},
    {"RedirectToAFile", [] { return redirect("file:///etc/hostname"); }},
    {"RedirectToNoServer", [] { return redirect(refusedUrl("/a.jpg")); }},
    {"Drip", [] { return dripping(picture(5000), 5ms); }},
    {"EndlessHeaders", [] { return endlessHeaders(); }},
    {"EndlessHeaderLine", [] { return endlessHeaderLine(); }},
    {"DeclaredTooLong", [] { return pictureDeclared(5000, 64LL * 1024 * 1024 + 1); }},
};

INSTANTIATE_TEST_SUITE_P(HttpClient, HttpClientFailure, testing::ValuesIn(kFailures),
                         [](const auto &info) { return std::string(info.param.name); });

using HttpClientFails = HttpExchange;

TEST_F(HttpClientFails, OnARefusedConnection)
{
    const HttpReply reply = fetch(refusedUrl("/a.jpg"));
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(reply.failure.isEmpty());
}

TEST_F(HttpClientFails, OnAnAddressWithoutHost)
{
    const HttpReply reply = fetch(QByteArray());
    EXPECT_EQ(reply.outcome, FetchOutcome::Failed);
    EXPECT_FALSE(reply.failure.isEmpty());
}

TEST_F(HttpClientFails, OnAnAddressThatIsNone)
{
    EXPECT_EQ(fetch("http://").outcome, FetchOutcome::Failed);
    EXPECT_EQ(fetch("http://127.0.0.1:99999/a").outcome, FetchOutcome::Failed);
    EXPECT_EQ(fetch("http://Http://127.0.0.1/a.jpg").outcome, FetchOutcome::Failed);
}

TEST_F(HttpClientFails, OnOtherSchemes)
{
    EXPECT_EQ(fetch("file:///etc/hostname").outcome, FetchOutcome::Failed);
    EXPECT_EQ(fetch("ftp://127.0.0.1/a").outcome, FetchOutcome::Failed);
    EXPECT_EQ(fetch("gopher://127.0.0.1/a").outcome, FetchOutcome::Failed);
}

TEST_F(HttpClientFails, NamingTheStatus)
{
    const HttpReply reply = fetch(camera_.url("/nothing"));
    EXPECT_TRUE(reply.failure.contains(QStringLiteral("404"))) << reply.failure.toStdString();
}

TEST_F(HttpClientFails, WithoutHarmToTheOthers)
{
    camera_.answer("/good", afterTurns(picture(2000), 1000));
    const std::vector<HttpReply> replies =
        fetchAll({{refusedUrl("/"), HttpForm::AsWritten, kAmpleLimit},
                  {camera_.url("/good"), HttpForm::AsWritten, kAmpleLimit},
                  {camera_.url("/nothing"), HttpForm::AsWritten, kAmpleLimit}});
    EXPECT_EQ(replies.at(0).outcome, FetchOutcome::Failed);
    EXPECT_EQ(replies.at(1).body.whole(), jpeg(2000));
    EXPECT_EQ(replies.at(2).outcome, FetchOutcome::Failed);
}

} // namespace
} // namespace velmora::test
