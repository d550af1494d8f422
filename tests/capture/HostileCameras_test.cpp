// A hundred and more kinds of misbehaving camera, all at once: each has the right outcome, within
// its time limit, and none harms a good one.
#include "HttpExchange.h"

#include <gtest/gtest.h>

#include <set>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 3s;

struct HostileRow
{
    const char *name;
    CameraAnswer (*answer)(const QByteArray &self); // self: the camera's own address
    FetchOutcome outcome;
};

CameraAnswer raw(const QByteArray &bytes)
{
    CameraAnswer answer;
    answer.bytes = bytes;
    return answer;
}

CameraAnswer status(const QByteArray &line)
{
    return response(line, {}, jpeg(5000));
}

CameraAnswer challenge(const QByteArray &kind)
{
    return response("401 Unauthorized", "WWW-Authenticate: " + kind + "\r\n", jpeg(5000));
}

CameraAnswer endless(const QByteArray &begin, const QByteArray &repeated)
{
    CameraAnswer answer = raw(begin);
    answer.repeated = repeated.repeated(50'000 / repeated.size() + 1);
    return answer;
}

CameraAnswer thenSilence(const QByteArray &begin)
{
    CameraAnswer answer = raw(begin);
    answer.atEnd = AtEnd::KeepOpen;
    return answer;
}

CameraAnswer headed(const QByteArray &headers)
{
    return raw("HTTP/1.1 200 OK\r\n" + headers + "\r\n" + jpeg(5000));
}

CameraAnswer declared(const QByteArray &length)
{
    return headed("Content-Length: " + length + "\r\n");
}

CameraAnswer chunked(const QByteArray &chunks, const QByteArray &headers = {})
{
    return raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n" + headers + "\r\n" + chunks);
}

const HostileRow kHostile[] = {
    {"NoHttp", [](const QByteArray &) { return raw("220 welcome to the mail server\r\n"); },
     FetchOutcome::Failed},
    {"OneEmptyLine", [](const QByteArray &) { return raw("\r\n\r\n"); }, FetchOutcome::Failed},
    {"NoStatus", [](const QByteArray &) { return raw("HTTP/1.1\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"BlankStatus", [](const QByteArray &) { return raw("HTTP/1.1 \r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"VersionOfTheFuture",
     [](const QByteArray &) { return raw("HTTP/9.9 200 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"StatusInLetters",
     [](const QByteArray &) { return raw("HTTP/1.1 abc OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"StatusTooLong",
     [](const QByteArray &) { return raw("HTTP/1.1 99999 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"StatusZero", [](const QByteArray &) { return raw("HTTP/1.1 000 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"StatusNegative",
     [](const QByteArray &) { return raw("HTTP/1.1 -200 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"Icy", [](const QByteArray &) { return raw("ICY 200 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"Rtsp", [](const QByteArray &) { return raw("RTSP/1.0 200 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"SmallLetters", [](const QByteArray &) { return raw("http/1.1 200 ok\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Arrived},
    {"Http2InPlain", [](const QByteArray &) { return raw("HTTP/2 200\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Arrived},
    {"NoReason", [](const QByteArray &) { return raw("HTTP/1.1 200\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Arrived},
    {"LineFeedsAlone",
     [](const QByteArray &) {
         return raw("HTTP/1.1 200 OK\nContent-Type: image/jpeg\n\n" + jpeg(5000));
     },
     FetchOutcome::Arrived},
    {"EndlessStatusLine", [](const QByteArray &) { return endless("HTTP/1.1 200 ", "O"); },
     FetchOutcome::Failed},
    {"NulInTheStatusLine",
     [](const QByteArray &) {
         return raw(QByteArray("HTTP/1.1 2\00000 OK\r\n\r\n", 21) + jpeg(5000));
     },
     FetchOutcome::Failed},
    {"Noise",
     [](const QByteArray &) { return raw(QByteArray("\x80\xff\0\1\2\3", 6).repeated(1000)); },
     FetchOutcome::Failed},
    {"APictureAlone", [](const QByteArray &) { return raw(jpeg(5000)); }, FetchOutcome::Failed},
    {"EncryptedHello",
     [](const QByteArray &) {
         return raw(QByteArray("\x16\3\3\0\x31\2\0\0\x2d\3\3", 11) + QByteArray(38, 'x'));
     },
     FetchOutcome::Failed},
    {"LeadingEmptyLines",
     [](const QByteArray &) { return raw("\r\n\r\nHTTP/1.1 200 OK\r\n\r\n" + jpeg(5000)); },
     FetchOutcome::Failed},
    {"ContinueForEver",
     [](const QByteArray &) { return endless("", "HTTP/1.1 100 Continue\r\n\r\n"); },
     FetchOutcome::Failed},
    {"ContinueThenAPicture",
     [](const QByteArray &) { return raw("HTTP/1.1 100 Continue\r\n\r\n" + picture(5000).bytes); },
     FetchOutcome::Arrived},
    {"EarlyHintsThenAPicture",
     [](const QByteArray &) {
         return raw("HTTP/1.1 103 Early Hints\r\nLink: </a>\r\n\r\n" + picture(5000).bytes);
     },
     FetchOutcome::Arrived},
    {"ProcessingForEver",
     [](const QByteArray &) { return endless("", "HTTP/1.1 102 Processing\r\n\r\n"); },
     FetchOutcome::Failed},
    {"SwitchingProtocols",
     [](const QByteArray &) {
         return raw("HTTP/1.1 101 Switching Protocols\r\nUpgrade: x\r\n\r\n" + jpeg(5000));
     },
     FetchOutcome::Failed},
    {"NoContent", [](const QByteArray &) { return raw("HTTP/1.1 204 No Content\r\n\r\n"); },
     FetchOutcome::Arrived},
    {"NoContentWithContent", [](const QByteArray &) { return status("204 No Content"); },
     FetchOutcome::Arrived},
    {"PartOfAPicture", [](const QByteArray &) { return status("206 Partial Content"); },
     FetchOutcome::Arrived},
    {"ManyChoices", [](const QByteArray &) { return status("300 Multiple Choices"); },
     FetchOutcome::Failed},
    {"NotModified", [](const QByteArray &) { return status("304 Not Modified"); },
     FetchOutcome::Failed},
    {"BadRequest", [](const QByteArray &) { return status("400 Bad Request"); },
     FetchOutcome::Failed},
    {"Unauthorised", [](const QByteArray &) { return status("401 Unauthorized"); },
     FetchOutcome::Failed},
    {"Forbidden", [](const QByteArray &) { return status("403 Forbidden"); }, FetchOutcome::Failed},
    {"Missing", [](const QByteArray &) { return status("404 Not Found"); }, FetchOutcome::Failed},
    {"ProxyWantsAUser",
     [](const QByteArray &) { return status("407 Proxy Authentication Required"); },
     FetchOutcome::Failed},
    {"TimedOut", [](const QByteArray &) { return status("408 Request Timeout"); },
     FetchOutcome::Failed},
    {"Teapot", [](const QByteArray &) { return status("418 I'm a teapot"); }, FetchOutcome::Failed},
    {"TooMany", [](const QByteArray &) { return status("429 Too Many Requests"); },
     FetchOutcome::Failed},
    {"ServerError", [](const QByteArray &) { return status("500 Internal Server Error"); },
     FetchOutcome::Failed},
    {"BadGateway", [](const QByteArray &) { return status("502 Bad Gateway"); },
     FetchOutcome::Failed},
    {"Busy", [](const QByteArray &) { return status("503 Service Unavailable"); },
     FetchOutcome::Failed},
    {"StatusOutOfRange", [](const QByteArray &) { return status("600 Beyond"); },
     FetchOutcome::Failed},
    {"LastStatus", [](const QByteArray &) { return status("999 Last"); }, FetchOutcome::Failed},
    {"EndlessMissingPage",
     [](const QByteArray &) { return endless("HTTP/1.1 404 Not Found\r\n\r\n", "gone "); },
     FetchOutcome::Failed},
    {"WrongPassword",
     [](const QByteArray &) { return locked(picture(5000), {LockKind::Basic, "bob", "x"}); },
     FetchOutcome::Failed},
    {"WrongDigestPassword",
     [](const QByteArray &) { return locked(picture(5000), {LockKind::Digest, "bob", "x"}); },
     FetchOutcome::Failed},
    {"UnknownChallenge", [](const QByteArray &) { return challenge("Pigeon realm=x"); },
     FetchOutcome::Failed},
    {"BlankChallenge", [](const QByteArray &) { return challenge(""); }, FetchOutcome::Failed},
    {"DigestWithoutANonce", [](const QByteArray &) { return challenge("Digest realm=\"x\""); },
     FetchOutcome::Failed},
    {"DigestAlwaysStale",
     [](const QByteArray &) {
         return challenge("Digest realm=\"x\", nonce=\"1\", stale=true, qop=\"auth\"");
     },
     FetchOutcome::Failed},
    {"DigestOfUnknownKind",
     [](const QByteArray &) {
         return challenge("Digest realm=\"x\", nonce=\"1\", algorithm=ROT13");
     },
     FetchOutcome::Failed},
    {"EndlessChallenge",
     [](const QByteArray &) {
         return endless("HTTP/1.1 401 No\r\nWWW-Authenticate: Digest realm=\"", "x");
     },
     FetchOutcome::Failed},
    {"Negotiate", [](const QByteArray &) { return challenge("Negotiate"); }, FetchOutcome::Failed},
    {"EndlessHeaders", [](const QByteArray &) { return endlessHeaders(); }, FetchOutcome::Failed},
    {"EndlessHeaderLine", [](const QByteArray &) { return endlessHeaderLine(); },
     FetchOutcome::Failed},
    {"ThousandHeaders",
     [](const QByteArray &) {
         return picture(5000, QByteArray("X-Padding: 0123456789\r\n").repeated(1000));
     },
     FetchOutcome::Arrived},
    {"HeaderWithoutAColon",
     [](const QByteArray &) { return picture(5000, "nothing to see here\r\n"); },
     FetchOutcome::Failed},
    {"HeaderWithoutAName", [](const QByteArray &) { return picture(5000, ": value\r\n"); },
     FetchOutcome::Arrived},
    {"NulInAHeader",
     [](const QByteArray &) { return picture(5000, QByteArray("X-Nul: a\0b\r\n", 11)); },
     FetchOutcome::Failed},
    {"FoldedHeader",
     [](const QByteArray &) { return picture(5000, "X-Folded: a\r\n b\r\n\tc\r\n"); },
     FetchOutcome::Arrived},
    {"LongDate",
     [](const QByteArray &) {
         return picture(5000, "Last-Modified: " + QByteArray(60000, 'd') + "\r\n");
     },
     FetchOutcome::Arrived},
    {"LongType",
     [](const QByteArray &) {
         return picture(5000, "Content-Type: " + QByteArray(50000, 't') + "\r\n");
     },
     FetchOutcome::Arrived},
    {"ManyCookies",
     [](const QByteArray &) {
         return picture(5000, QByteArray("Set-Cookie: a=b; Max-Age=1\r\n").repeated(500));
     },
     FetchOutcome::Arrived},
    {"CutInTheHeaders", [](const QByteArray &) { return raw("HTTP/1.1 200 OK\r\nContent-Ty"); },
     FetchOutcome::Arrived},
    {"SilentInTheHeaders",
     [](const QByteArray &) { return thenSilence("HTTP/1.1 200 OK\r\nContent-Ty"); },
     FetchOutcome::Failed},
    {"SilentBehindTheHeaders",
     [](const QByteArray &) {
         return thenSilence("HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n");
     },
     FetchOutcome::Failed},
    {"ClearSiteData",
     [](const QByteArray &) {
         return picture(5000, "Alt-Svc: h3=\":1\"\r\nStrict-Transport-Security: max-age=1\r\n");
     },
     FetchOutcome::Arrived},
    {"LengthNegative", [](const QByteArray &) { return declared("-1"); }, FetchOutcome::Failed},
    {"LengthInLetters", [](const QByteArray &) { return declared("many"); }, FetchOutcome::Failed},
    {"LengthOfHalfTheRange", [](const QByteArray &) { return declared("9223372036854775807"); },
     FetchOutcome::Failed},
    {"LengthBeyondTheRange", [](const QByteArray &) { return declared("18446744073709551616"); },
     FetchOutcome::Failed},
    {"LengthHex", [](const QByteArray &) { return declared("0x1388"); }, FetchOutcome::Arrived},
    {"LengthJustTooLong", [](const QByteArray &) { return declared("67108865"); },
     FetchOutcome::Failed},
    {"LengthTwiceInOne", [](const QByteArray &) { return declared("5000, 5000"); },
     FetchOutcome::Arrived},
    {"LengthOneMore", [](const QByteArray &) { return declared("5001"); }, FetchOutcome::Failed},
    {"LengthZero", [](const QByteArray &) { return declared("0"); }, FetchOutcome::Arrived},
    {"LengthWithABlank", [](const QByteArray &) { return declared("5 000"); },
     FetchOutcome::Arrived},
    {"LengthsThatDiffer",
     [](const QByteArray &) { return headed("Content-Length: 5000\r\nContent-Length: 4000\r\n"); },
     FetchOutcome::Failed},
    {"LengthsThatDifferInOne", [](const QByteArray &) { return declared("4000, 5000"); },
     FetchOutcome::Failed},
    {"LengthsThatAreTheSame",
     [](const QByteArray &) { return headed("Content-Length: 5000\r\nContent-Length: 5000\r\n"); },
     FetchOutcome::Arrived},
    {"TransferInGzip", [](const QByteArray &) { return headed("Transfer-Encoding: gzip\r\n"); },
     FetchOutcome::Failed},
    {"TransferInDeflate",
     [](const QByteArray &) { return headed("Transfer-Encoding: deflate\r\n"); },
     FetchOutcome::Failed},
    {"TransferInBrotli", [](const QByteArray &) { return headed("Transfer-Encoding: br\r\n"); },
     FetchOutcome::Failed},
    {"TransferInIdentity",
     [](const QByteArray &) { return headed("Transfer-Encoding: identity\r\n"); },
     FetchOutcome::Failed},
    {"TransferInGzipInChunks",
     [](const QByteArray &) { return headed("Transfer-Encoding: gzip, chunked\r\n"); },
     FetchOutcome::Failed},
    {"TransferInUnknownCoding",
     [](const QByteArray &) { return headed("Transfer-Encoding: rot13\r\n"); },
     FetchOutcome::Failed},
    {"ContentInGzip",
     [](const QByteArray &) {
         return headed("Content-Encoding: gzip\r\nContent-Length: 5000\r\n");
     },
     FetchOutcome::Arrived},
    {"ChunksAndALength",
     [](const QByteArray &) { return chunked("4\r\nabcd\r\n0\r\n\r\n", "Content-Length: 99\r\n"); },
     FetchOutcome::Arrived},
    {"ChunkSizeInLetters", [](const QByteArray &) { return chunked("xyz\r\nabcd\r\n0\r\n\r\n"); },
     FetchOutcome::Failed},
    {"ChunkSizeNegative", [](const QByteArray &) { return chunked("-4\r\nabcd\r\n0\r\n\r\n"); },
     FetchOutcome::Failed},
    {"ChunkSizeBeyondTheRange",
     [](const QByteArray &) { return chunked("FFFFFFFFFFFFFFFFF\r\nabcd"); }, FetchOutcome::Failed},
    {"ChunkSizeOfTheWholeRange",
     [](const QByteArray &) { return chunked("7FFFFFFFFFFFFFFF\r\nabcd"); }, FetchOutcome::Failed},
    {"ChunkSizeWithoutEnd",
     [](const QByteArray &) {
         return endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", "0");
     },
     FetchOutcome::Failed},
    {"ChunkExtensionWithoutEnd",
     [](const QByteArray &) {
         return endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4;", "x");
     },
     FetchOutcome::Failed},
    {"ChunkWithoutALineEnd", [](const QByteArray &) { return chunked("4\r\nabcdefgh"); },
     FetchOutcome::Failed},
    {"LastChunkMissing", [](const QByteArray &) { return chunked("4\r\nabcd\r\n"); },
     FetchOutcome::Failed},
    {"CutInAChunk", [](const QByteArray &) { return chunked("2000\r\nabcd"); },
     FetchOutcome::Failed},
    {"NoChunkAtAll", [](const QByteArray &) { return chunked("0\r\n\r\n"); },
     FetchOutcome::Arrived},
    {"TrailersWithoutEnd",
     [](const QByteArray &) {
         return endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n",
                        "X-Trailer: x\r\n");
     },
     FetchOutcome::Failed},
    {"TrailerLineWithoutEnd",
     [](const QByteArray &) {
         return endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nX: ", "x");
     },
     FetchOutcome::Failed},
    {"ChunksOfOneByte",
     [](const QByteArray &) {
         return chunked(QByteArray("1\r\nx\r\n").repeated(5000) + "0\r\n\r\n");
     },
     FetchOutcome::Arrived},
    {"ChunksWithoutEnd",
     [](const QByteArray &) {
         return endless("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", "1\r\nx\r\n");
     },
     FetchOutcome::Failed},
    {"Nothing", [](const QByteArray &) { return hangUp(); }, FetchOutcome::Failed},
    {"Silence", [](const QByteArray &) { return silence(); }, FetchOutcome::Failed},
    {"CutInTheBody", [](const QByteArray &) { return pictureDeclared(3000, 5000); },
     FetchOutcome::Failed},
    {"NothingOfTheBody", [](const QByteArray &) { return pictureDeclared(0, 5000); },
     FetchOutcome::Failed},
    {"MoreThanDeclared", [](const QByteArray &) { return pictureDeclared(5000, 3000); },
     FetchOutcome::Arrived},
    {"EndlessBody", [](const QByteArray &) { return endlessBody(); }, FetchOutcome::Failed},
    {"DripOfTheBody", [](const QByteArray &) { return dripping(picture(5000), 5ms); },
     FetchOutcome::Failed},
    {"DripOfNothing",
     [](const QByteArray &) {
         return dripping(raw("HTTP/1.1 200 OK\r\n" + QByteArray(5000, ' ')), 5ms);
     },
     FetchOutcome::Failed},
    {"RedirectLoop", [](const QByteArray &self) { return redirect(self); }, FetchOutcome::Failed},
    {"RedirectToAFile", [](const QByteArray &) { return redirect("file:///etc/hostname"); },
     FetchOutcome::Failed},
    {"RedirectToFtp", [](const QByteArray &) { return redirect("ftp://127.0.0.1/a"); },
     FetchOutcome::Failed},
    {"RedirectToGopher", [](const QByteArray &) { return redirect("gopher://127.0.0.1:1/a"); },
     FetchOutcome::Failed},
    {"RedirectToAScript", [](const QByteArray &) { return redirect("javascript:alert(1)"); },
     FetchOutcome::Failed},
    {"RedirectToNoHost", [](const QByteArray &) { return redirect("http:///"); },
     FetchOutcome::Failed},
    {"RedirectToABadPort", [](const QByteArray &) { return redirect("http://127.0.0.1:99999/"); },
     FetchOutcome::Failed},
    {"RedirectToABadAddress", [](const QByteArray &) { return redirect("http://[::1/"); },
     FetchOutcome::Failed},
    {"RedirectToPortZero", [](const QByteArray &) { return redirect("http://127.0.0.1:0/"); },
     FetchOutcome::Failed},
    {"RedirectToBlanks", [](const QByteArray &) { return redirect("http://a b c/"); },
     FetchOutcome::Failed},
    {"RedirectToNoServer", [](const QByteArray &) { return redirect(refusedUrl("/a.jpg")); },
     FetchOutcome::Failed},
    {"RedirectToNothing", [](const QByteArray &) { return redirect(""); }, FetchOutcome::Failed},
    {"RedirectWithoutAPlace", [](const QByteArray &) { return status("302 Found"); },
     FetchOutcome::Failed},
    {"RedirectFarAway", [](const QByteArray &) { return redirect("/" + QByteArray(60000, 'x')); },
     FetchOutcome::Failed},
    {"RedirectWithAnEndlessBody",
     [](const QByteArray &) {
         return endless("HTTP/1.1 302 Found\r\nLocation: /gone\r\n\r\n", "x");
     },
     FetchOutcome::Failed},
};

class HostileCameras : public HttpExchange, public testing::WithParamInterface<HttpForm>
{
protected:
    static QByteArray pathOf(const HostileRow &row) { return QByteArray("/") + row.name + ".jpg"; }

    std::vector<HttpReply> fetchEach()
    {
        std::vector<HttpRequest> requests;
        for (const HostileRow &row : kHostile) {
            const QByteArray url = camera_.url(pathOf(row), "alice:s3cret@");
            camera_.answer(pathOf(row), row.answer(url));
            requests.push_back({url, GetParam(), kLimit});
        }
        camera_.answer("/good.jpg", picture(200'000));
        requests.push_back({camera_.url("/good.jpg"), GetParam(), kAmpleLimit});
        return fetchAll(requests);
    }

    static void expectReason(const QString &failure)
    {
        EXPECT_FALSE(failure.isEmpty());
        EXPECT_FALSE(failure.contains(QStringLiteral("alice"))) << failure.toStdString();
        EXPECT_FALSE(failure.contains(QStringLiteral("s3cret"))) << failure.toStdString();
        EXPECT_FALSE(failure.contains(QStringLiteral("memory"))) << failure.toStdString();
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, HostileCameras,
                         testing::Values(HttpForm::AsWritten, HttpForm::Http10),
                         [](const auto &info) {
                             return info.param == HttpForm::Http10 ? "Http10" : "AsWritten";
                         });

TEST_P(HostileCameras, AllAtOnceEndAsTheyShould)
{
    const std::vector<HttpReply> replies = fetchEach();
    std::size_t at = 0;
    for (const HostileRow &row : kHostile) {
        SCOPED_TRACE(row.name);
        const HttpReply &reply = replies.at(at++);
        EXPECT_EQ(reply.outcome, row.outcome) << reply.failure.toStdString();
        EXPECT_LT(reply.duration, 2 * kLimit);
        if (reply.outcome == FetchOutcome::Failed) {
            expectReason(reply.failure);
        }
    }
    EXPECT_EQ(replies.back().body.whole(), jpeg(200'000));
    EXPECT_EQ(tree_.files(), QStringList());
}

TEST(HostileCamerasTable, HasAHundredKindsAndEachOnce)
{
    std::set<std::string> names;
    for (const HostileRow &row : kHostile) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
    }
    EXPECT_GE(names.size(), 100U);
}

} // namespace
} // namespace velmora::test
