// From the address that the user typed to the request that is sent.
#include "capture/CameraUrl.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

struct TextRow
{
    const char *name;
    QString given;
    QString expected;
};

void PrintTo(const TextRow &row, std::ostream *out)
{
    *out << row.given.toStdString();
}

class ExpandTemplate : public testing::TestWithParam<TextRow>
{
};

TEST_P(ExpandTemplate, PutsTheLastAlternativeIn)
{
    EXPECT_EQ(expandTemplate(GetParam().given), GetParam().expected);
}

const TextRow kTemplates[] = {
    {"TwoAlternatives", QStringLiteral("http://h/<a:b>.jpg"), QStringLiteral("http://h/b.jpg")},
    {"ManyAlternatives", QStringLiteral("http://h/<1:2:3:4>/x"), QStringLiteral("http://h/4/x")},
    {"OneAlternative", QStringLiteral("http://h/<a>.jpg"), QStringLiteral("http://h/a.jpg")},
    {"NoAlternative", QStringLiteral("http://h/<>.jpg"), QStringLiteral("http://h/.jpg")},
    {"EmptyLastAlternative", QStringLiteral("http://h/<a:>.jpg"), QStringLiteral("http://h/.jpg")},
    {"EmptyFirstAlternative", QStringLiteral("http://h/<:b>.jpg"),
     QStringLiteral("http://h/b.jpg")},
    {"AtTheBegin", QStringLiteral("<a:b>.jpg"), QStringLiteral("b.jpg")},
    {"AtTheEnd", QStringLiteral("http://h/<a:b>"), QStringLiteral("http://h/b")},
    {"NoBrackets", QStringLiteral("http://h/a.jpg"), QStringLiteral("http://h/a.jpg")},
    {"OpenOnly", QStringLiteral("http://h/<a:b.jpg"), QStringLiteral("http://h/<a:b.jpg")},
    {"CloseOnly", QStringLiteral("http://h/a:b>.jpg"), QStringLiteral("http://h/a:b>.jpg")},
    {"CloseBeforeOpen", QStringLiteral("http://h/>a:b<.jpg"), QStringLiteral("http://h/>a:b<.jpg")},
    {"CloseOnBothSides", QStringLiteral("h/>x<a:b>.jpg"), QStringLiteral("h/>xb.jpg")},
    {"SeveralTemplates", QStringLiteral("h/<a:b>/<c:d>.jpg"), QStringLiteral("h/b/<c:d>.jpg")},
    {"OpenWithinAlternatives", QStringLiteral("h/<a:<b>.jpg"), QStringLiteral("h/<b.jpg")},
    {"Empty", QString(), QString()},
};

INSTANTIATE_TEST_SUITE_P(CameraUrl, ExpandTemplate, testing::ValuesIn(kTemplates),
                         [](const auto &info) { return std::string(info.param.name); });

struct RequestRow
{
    const char *name;
    QString given;
    QByteArray url;
    HttpForm form;
};

void PrintTo(const RequestRow &row, std::ostream *out)
{
    *out << row.given.toStdString();
}

class RequestFor : public testing::TestWithParam<RequestRow>
{
};

TEST_P(RequestFor, GivesAddressAndForm)
{
    const HttpRequest request = requestFor(GetParam().given, 5s);
    EXPECT_EQ(request.url, GetParam().url);
    EXPECT_EQ(request.form, GetParam().form);
}

const RequestRow kRequests[] = {
    {"Http", QStringLiteral("http://h/img/a.jpg"), "http://h/img/a.jpg", HttpForm::Http10},
    {"Https", QStringLiteral("https://h/x.JPG"), "http://h/x.JPG", HttpForm::Http10},
    {"UpperHttp", QStringLiteral("HTTP://h/x.JPG"), "http://h/x.JPG", HttpForm::Http10},
    {"UpperHttps", QStringLiteral("HTTPS://h/x.JPG"), "http://h/x.JPG", HttpForm::Http10},
    {"MixedCaseSchemeStays", QStringLiteral("Http://h/x.jpg"), "http://Http://h/x.jpg",
     HttpForm::Http10},
    {"SchemeInThePathGoesToo", QStringLiteral("http://h/http://x.jpg"), "http://h/x.jpg",
     HttpForm::Http10},
    {"WithoutScheme", QStringLiteral("h/x.jpg"), "http://h/x.jpg", HttpForm::Http10},
    {"MixedCaseEnding", QStringLiteral("http://h/x.jPg"), "http://h/x.jPg", HttpForm::Http10},
    {"EndingInTheQuery", QStringLiteral("http://h/x?f=a.jpg"), "http://h/x?f=a.jpg",
     HttpForm::Http10},
    {"PortKept", QStringLiteral("http://10.0.0.5:8080/x.jpg"), "http://10.0.0.5:8080/x.jpg",
     HttpForm::Http10},
    {"HttpsPortKept", QStringLiteral("https://10.0.0.5:8443/x.JPG"), "http://10.0.0.5:8443/x.JPG",
     HttpForm::Http10},
    {"CredentialsKept", QStringLiteral("https://me:pw@h/x.jpg"), "http://me:pw@h/x.jpg",
     HttpForm::Http10},
    {"BlankEncoded", QStringLiteral("http://h/my cam.jpg"), "http://h/my%20cam.jpg",
     HttpForm::Http10},
    {"HashInThePath", QStringLiteral("http://h/cam#1/x.jpg"), "http://h/cam%231/x.jpg",
     HttpForm::Http10},
    {"HashAtTheEnd", QStringLiteral("http://h/snap#.jpg"), "http://h/snap%23.jpg",
     HttpForm::Http10},
    {"HashInTheQuery", QStringLiteral("http://h/x?c=#2.jpg"), "http://h/x?c=%232.jpg",
     HttpForm::Http10},
    {"AccentsInTheCodePage", QStringLiteral("http://h/caf\u00e9/\u0153uvre.jpg"),
     "http://h/caf%E9/%9Cuvre.jpg", HttpForm::Http10},
    {"BeyondTheCodePage", QStringLiteral("http://h/\u0142.jpg"), "http://h/%C5%82.jpg",
     HttpForm::Http10},
    {"HostBeyondAscii", QStringLiteral("http://caf\u00e9/a.jpg"), "http://caf%C3%A9/a.jpg",
     HttpForm::Http10},
    {"NoPath", QStringLiteral("http://h.jpg"), "", HttpForm::Http10},
    {"NoHost", QStringLiteral("/x.jpg"), "", HttpForm::Http10},
    {"SchemeAlone", QStringLiteral("http:///x.jpg"), "", HttpForm::Http10},
    {"NoSlash", QStringLiteral("x.jpg"), "x.jpg", HttpForm::AsWritten},
    {"JpegIsAsWritten", QStringLiteral("https://h/x.jpeg"), "https://h/x.jpeg",
     HttpForm::AsWritten},
    {"ScriptIsAsWritten", QStringLiteral("https://h:81/snap.cgi?a=b&c=d#e"),
     "https://h:81/snap.cgi?a=b&c=d#e", HttpForm::AsWritten},
    {"JpgBeforeTheQuery", QStringLiteral("http://h/x.jpg?1"), "http://h/x.jpg?1",
     HttpForm::AsWritten},
    {"MixedCaseAsWritten", QStringLiteral("Http://h/snap"), "Http://h/snap", HttpForm::AsWritten},
    {"BlanksEncodedAsWritten", QStringLiteral("http://h/a b c"), "http://h/a%20b%20c",
     HttpForm::AsWritten},
    {"BeyondAsciiEncoded", QStringLiteral("http://h/caf\u00e9"), "http://h/caf%C3%A9",
     HttpForm::AsWritten},
    {"ControlCharactersEncoded", QStringLiteral("http://h/a\r\nX-Evil: 1"),
     "http://h/a%0D%0AX-Evil:%201", HttpForm::AsWritten},
    {"PercentKept", QStringLiteral("http://h/a%20b"), "http://h/a%20b", HttpForm::AsWritten},
    {"Empty", QString(), "", HttpForm::AsWritten},
};

INSTANTIATE_TEST_SUITE_P(CameraUrl, RequestFor, testing::ValuesIn(kRequests),
                         [](const auto &info) { return std::string(info.param.name); });

class LiveRequestFor : public testing::TestWithParam<RequestRow>
{
};

TEST_P(LiveRequestFor, GivesAddressAndForm)
{
    const HttpRequest request = liveRequestFor(GetParam().given, 5s);
    EXPECT_EQ(request.url, GetParam().url);
    EXPECT_EQ(request.form, GetParam().form);
}

const RequestRow kLiveRequests[] = {
    {"Script", QStringLiteral("http://h/snap.cgi?a=b"), "http://h/snap.cgi?a=b", HttpForm::Http10},
    {"WithoutScheme", QStringLiteral("h/snap"), "http://h/snap", HttpForm::Http10},
    {"UpperHttp", QStringLiteral("HTTP://h/snap"), "http://h/snap", HttpForm::Http10},
    {"MixedCaseHttp", QStringLiteral("Http://h/snap"), "http://h/snap", HttpForm::Http10},
    {"SchemeInThePathGoesToo", QStringLiteral("http://h/http://x"), "http://h/x", HttpForm::Http10},
    {"PortKept", QStringLiteral("http://10.0.0.5:8080/snap"), "http://10.0.0.5:8080/snap",
     HttpForm::Http10},
    {"CredentialsKept", QStringLiteral("me:pw@h/snap"), "http://me:pw@h/snap", HttpForm::Http10},
    {"BlankEncoded", QStringLiteral("http://h/my cam"), "http://h/my%20cam", HttpForm::Http10},
    {"Jpeg", QStringLiteral("http://h/x.jpeg"), "http://h/x.jpeg", HttpForm::Http10},
    {"HttpsAsWritten", QStringLiteral("https://h:444/snap"), "https://h:444/snap",
     HttpForm::AsWritten},
    {"UpperHttpsAsWritten", QStringLiteral("HTTPS://h/snap"), "HTTPS://h/snap",
     HttpForm::AsWritten},
    {"MixedCaseHttpsAsWritten", QStringLiteral("HttpS://h/snap"), "HttpS://h/snap",
     HttpForm::AsWritten},
    {"HttpsJpgBeforeTheQuery", QStringLiteral("https://h/x.jpg?1"), "https://h/x.jpg?1",
     HttpForm::AsWritten},
    {"HttpsBlankEncoded", QStringLiteral("https://h/a b"), "https://h/a%20b", HttpForm::AsWritten},
    {"HttpsJpg", QStringLiteral("https://h/x.JPG"), "http://h/x.JPG", HttpForm::Http10},
    {"HttpJpg", QStringLiteral("http://h/img/a.jpg"), "http://h/img/a.jpg", HttpForm::Http10},
    {"MixedCaseJpgStays", QStringLiteral("Http://h/x.jpg"), "http://Http://h/x.jpg",
     HttpForm::Http10},
    {"JpgWithAHashAndAccents", QStringLiteral("http://h/\u00e9#.jpg"), "http://h/%E9%23.jpg",
     HttpForm::Http10},
    {"ScriptWithAHash", QStringLiteral("http://h/snap#e"), "http://h/snap#e", HttpForm::Http10},
    {"ScriptWithAccents", QStringLiteral("http://h/\u00e9"), "http://h/%C3%A9", HttpForm::Http10},
    {"HostAlone", QStringLiteral("http://h"), "http://h/", HttpForm::Http10},
    {"HostAloneWithoutScheme", QStringLiteral("10.0.0.5:81"), "http://10.0.0.5:81/",
     HttpForm::Http10},
    {"HostAndQuery", QStringLiteral("http://h?a=b/c"), "http://h/?a=b/c", HttpForm::Http10},
    {"HostThatEndsInJpg", QStringLiteral("http://h.jpg"), "http://h.jpg/", HttpForm::Http10},
    {"SlashThere", QStringLiteral("http://h/"), "http://h/", HttpForm::Http10},
    {"HttpsHostAlone", QStringLiteral("https://h"), "https://h", HttpForm::AsWritten},
    {"NoHost", QStringLiteral("/snap"), "", HttpForm::Http10},
    {"SchemeAlone", QStringLiteral("http://"), "", HttpForm::Http10},
    {"SchemeAndPath", QStringLiteral("http:///snap"), "", HttpForm::Http10},
    {"Empty", QString(), "", HttpForm::Http10},
};

INSTANTIATE_TEST_SUITE_P(CameraUrl, LiveRequestFor, testing::ValuesIn(kLiveRequests),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(LiveRequestFor, PassesTheLimitOn)
{
    EXPECT_EQ(liveRequestFor(QStringLiteral("http://h/a"), 7s).limit, 7s);
    EXPECT_EQ(liveRequestFor(QStringLiteral("https://h/a"), 1500ms).limit, 1500ms);
}

TEST(RequestFor, PassesTheLimitOn)
{
    EXPECT_EQ(requestFor(QStringLiteral("http://h/a.jpg"), 7s).limit, 7s);
    EXPECT_EQ(requestFor(QStringLiteral("http://h/a"), 1500ms).limit, 1500ms);
}

struct ServerRow
{
    const char *name;
    QString one;
    QString other;
    bool isSame;
};

void PrintTo(const ServerRow &row, std::ostream *out)
{
    *out << row.one.toStdString() << " and " << row.other.toStdString();
}

class SameServer : public testing::TestWithParam<ServerRow>
{
};

TEST_P(SameServer, IsThatOfSchemeHostAndPort)
{
    EXPECT_EQ(isSameServer(GetParam().one, GetParam().other), GetParam().isSame);
    EXPECT_EQ(isSameServer(GetParam().other, GetParam().one), GetParam().isSame);
}

const ServerRow kServers[] = {
    {"AnotherPath", QStringLiteral("http://h/a"), QStringLiteral("http://h/b"), true},
    {"AnotherHost", QStringLiteral("http://h/a"), QStringLiteral("http://g/a"), false},
    {"AnotherPort", QStringLiteral("http://h/a"), QStringLiteral("http://h:8080/a"), false},
    {"TheUsualPort", QStringLiteral("https://h/a"), QStringLiteral("https://h:443/a"), true},
    {"AnotherScheme", QStringLiteral("http://h/a"), QStringLiteral("https://h/a"), false},
    {"NoScheme", QStringLiteral("h/a"), QStringLiteral("http://h/a"), true},
    {"AnotherCase", QStringLiteral("HTTP://H/a"), QStringLiteral("http://h/a"), true},
    {"AUser", QStringLiteral("http://u:p@h/a"), QStringLiteral("http://h/a"), true},
    {"AHostAsUser", QStringLiteral("http://h@g/a"), QStringLiteral("http://h/a"), false},
    {"AnAtInTheQuery", QStringLiteral("http://h?a@g"), QStringLiteral("http://g/"), false},
    {"OneSlash", QStringLiteral("http:/h/a"), QStringLiteral("http:/g/a"), false},
    {"WithoutItsScheme", QStringLiteral("https://h/a"), QStringLiteral("https://h/a.jpg"), false},
    {"Alternatives", QStringLiteral("http://<g:h>/a"), QStringLiteral("http://h/a"), true},
    {"AnotherAlternative", QStringLiteral("http://<h:g>/a"), QStringLiteral("http://h/a"), false},
    {"BracketsAroundTheHost", QStringLiteral("http://[::1]/a"), QStringLiteral("http://[::1]:80/b"),
     true},
    {"AStream", QStringLiteral("rtsp://h/a"), QStringLiteral("rtsp://h:554/b"), true},
};

INSTANTIATE_TEST_SUITE_P(CameraUrl, SameServer, testing::ValuesIn(kServers),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
} // namespace velmora::test
