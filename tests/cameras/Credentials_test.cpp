// What is shown of a camera's address: its host, its path and whatever tells one picture from
// another; never who may see it.
#include "cameras/Credentials.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <array>

namespace velmora::test {
namespace {

struct ShownRow
{
    const char *name;
    const char16_t *given;
    const char16_t *shown;
};

void PrintTo(const ShownRow &row, std::ostream *out)
{
    *out << QString::fromUtf16(row.given).toStdString();
}

class WithoutCredentials : public testing::TestWithParam<ShownRow>
{
};

TEST_P(WithoutCredentials, ShowsWhatIsHarmless)
{
    EXPECT_EQ(withoutCredentials(QString::fromUtf16(GetParam().given)),
              QString::fromUtf16(GetParam().shown));
}

TEST_P(WithoutCredentials, ShowsTheSameWhenItIsAskedTwice)
{
    const QString shown = withoutCredentials(QString::fromUtf16(GetParam().given));
    EXPECT_EQ(withoutCredentials(shown), shown);
}

const ShownRow kRows[] = {
    {"UserAndPassword", u"http://me:pw@h/a.jpg", u"http://h/a.jpg"},
    {"UserAlone", u"https://me@h/a.jpg", u"https://h/a.jpg"},
    {"EmptyPassword", u"http://me:@h/a.jpg", u"http://h/a.jpg"},
    {"PasswordAlone", u"http://:pw@h/a.jpg", u"http://h/a.jpg"},
    {"NeitherOfBoth", u"http://@h/a.jpg", u"http://h/a.jpg"},
    {"WithPort", u"http://me:pw@h:8080/a.jpg", u"http://h:8080/a.jpg"},
    {"WithoutPath", u"http://me:pw@h", u"http://h"},
    {"NumberedHost", u"http://me:pw@[fe80::1]:81/a", u"http://[fe80::1]:81/a"},
    {"OtherScheme", u"rtsp://me:pw@h/live", u"rtsp://h/live"},
    {"SchemeInCapitals", u"HTTP://me:pw@h/a.jpg", u"HTTP://h/a.jpg"},
    {"OneSlash", u"http:/me:pw@h/a.jpg", u"http:/h/a.jpg"},
    {"ThreeSlashes", u"http:///me:pw@h/a.jpg", u"http:///h/a.jpg"},
    {"Backslashes", u"http:\\me:pw@h/a.jpg", u"http:\\h/a.jpg"},
    {"NoSlash", u"http:me:pw@h/a.jpg", u"h/a.jpg"},
    {"WithoutScheme", u"me:pw@h/a.jpg", u"h/a.jpg"},
    {"SlashesAlone", u"//me:pw@h/a.jpg", u"h/a.jpg"},
    {"ColonAlone", u"://me:pw@h/a.jpg", u"h/a.jpg"},
    {"SchemeBehindTheUser", u"me:http://pw@h/a.jpg", u"h/a.jpg"},
    {"EncodedPassword", u"http://me:p%40w@h/a.jpg", u"http://h/a.jpg"},
    {"AtSignInThePassword", u"http://me:p@w@h/a.jpg", u"http://h/a.jpg"},
    {"NumberSignInThePassword", u"http://me:top#secret8@h/a.jpg", u"http://h/a.jpg"},
    {"SlashInThePassword", u"http://me:top/secret8@h/a.jpg", u"http://h/a.jpg"},
    {"QuestionMarkInThePassword", u"http://me:top?secret8@h/a.jpg", u"http://h/a.jpg"},
    {"AmpersandInThePassword", u"http://me:top&secret8@h/a.jpg", u"http://h/a.jpg"},
    {"SemicolonInThePassword", u"http://me:top;secret8@h/a.jpg", u"http://h/a.jpg"},
    {"EqualsInThePassword", u"http://me:top=secret8@h/a.jpg", u"http://h/a.jpg"},
    {"BlankInThePassword", u"http://me:top secret8@h/a.jpg", u"http://h/a.jpg"},
    {"BackslashInThePassword", u"http://me:top\\secret8@h/a.jpg", u"http://h/a.jpg"},
    {"SchemeInThePassword", u"http://me:http://pw@h/a.jpg", u"http://h/a.jpg"},
    {"BracketInThePassword", u"http://me:t(o)p@h/a.jpg", u"http://h/a.jpg"},
    {"AlternativesInThePassword", u"http://me:<a:b>@h/a.jpg", u"http://h/a.jpg"},
    {"Umlaut", u"http://me:schl\u00fcssel@h/a.jpg", u"http://h/a.jpg"},
    {"EverythingInThePassword", u"http://me:a#b/c?d&e;f=g@i@h/a.jpg?camera=1",
     u"http://h/a.jpg?camera=1"},
    {"AtSignInThePath", u"http://me:pw@h/a@b.jpg", u"http://b.jpg"},
    {"InRoundBrackets", u"(http://me:pw@h/a.jpg)", u"(http://h/a.jpg)"},
    {"InSquareBrackets", u"[http:/me:pw@h/a.jpg]", u"[http:/h/a.jpg]"},
    {"InAngles", u"<http://me:pw@h/a.jpg>", u"<http://h/a.jpg>"},
    {"InBraces", u"{http://me:pw@h/a.jpg}", u"{http://h/a.jpg}"},
    {"InQuotes", u"\"http://me:pw@h/a.jpg\"", u"\"http://h/a.jpg\""},
    {"InApostrophes", u"'http://me:p/w@h/a.jpg'", u"'http://h/a.jpg'"},
    {"InBracketsWithoutScheme", u"(me:pw@h/a.jpg)", u"h/a.jpg)"},
    {"BehindABlank", u" http://me:pw@h/a.jpg", u" http://h/a.jpg"},
    {"BehindAText", u"Test http://me:p#w@h/a.jpg 0:3", u"Test http://h/a.jpg 0:3"},
    {"SchemeInThePasswordWithoutOne", u"me:pw <http://more@h/a.jpg", u"h/a.jpg"},
    {"BehindAnAtSign", u"mail@home http://me:pw@h/a.jpg", u"h/a.jpg"},
    {"UserAndFields", u"http://me:pw@h/a.cgi?pass=x", u"http://h/a.cgi?pass=***"},
    {"SecretAmongOthers", u"http://h/a.cgi?user=me&pwd=secret&size=1",
     u"http://h/a.cgi?user=***&pwd=***&size=1"},
    {"NumberSignInAField", u"http://h/a?pwd=top#secret8&size=1", u"http://h/a?pwd=***&size=1"},
    {"SlashInAField", u"http://h/a?pwd=top/secret8", u"http://h/a?pwd=***"},
    {"EqualsInAField", u"http://h/a?pwd=c2VjcmV0==", u"http://h/a?pwd=***"},
    {"AmpersandInAField", u"http://h/a?pwd=top&secret8", u"http://h/a?pwd=***&***"},
    {"SemicolonInAField", u"http://h/a?pwd=top;secret8", u"http://h/a?pwd=***;***"},
    {"QuestionMarkInAField", u"http://h/a?pwd=top?secret8", u"http://h/a?pwd=***?***"},
    {"CommaInAField", u"http://h/a?pwd=top,secret8", u"http://h/a?pwd=***"},
    {"FieldInBrackets", u"http://h/a?login[password]=secret8", u"http://h/a?login=***"},
    {"FieldsWithoutNames", u"http://h/a?me&secret8", u"http://h/a?***&***"},
    {"HarmlessFieldWithoutValue", u"http://h/a?snapshot&camera", u"http://h/a?snapshot&camera"},
    {"FieldInAHarmlessField", u"http://h/a?camera=1%26pwd%3Dsecret8", u"http://h/a?camera=***"},
    {"UserInAHarmlessField", u"http://h/a?id=me:secret8", u"http://h/a?id=***"},
    {"FragmentInAHarmlessField", u"http://h/a?camera=1#secret8", u"http://h/a?camera=***"},
    {"EncodedNameOfAField", u"http://h/a?p%77d=secret8", u"http://h/a?p%77d=***"},
    {"NameOfBlanks", u"http://h/a? pwd =secret8", u"http://h/a? pwd =***"},
    {"EmptyName", u"http://h/a?=secret8", u"http://h/a?=***"},
    {"EmptyFields", u"http://h/a?&&camera=2&", u"http://h/a?&&camera=2&"},
    {"FieldsInTheMiddleOfThePath", u"http://h/user=me/password=secret8/a.jpg",
     u"http://h/user=***/password=***/a.jpg"},
    {"HarmlessFieldsInThePath", u"http://h/camera=2/size=640x480/a.jpg",
     u"http://h/camera=2/size=640x480/a.jpg"},
    {"FieldsBehindSemicolons", u"http://h/a.cgi;user=me;password=secret8/b",
     u"http://h/a.cgi;user=***;password=***/b"},
    {"FieldsBehindAnAmpersand", u"http://h/a.cgi&pwd=secret8", u"http://h/a.cgi&pwd=***"},
    {"FieldsBehindACommaInThePath", u"http://h/a,user=me,pwd=secret8", u"http://h/a,user=***"},
    {"Fragment", u"http://h/a.jpg#secret8", u"http://h/a.jpg#***"},
    {"FragmentWithASlash", u"http://h/a.jpg#secret8/secret9", u"http://h/a.jpg#***"},
    {"FragmentBehindTheHost", u"http://h#secret8", u"http://h#***"},
    {"HarmlessFragment", u"http://h/a.jpg#camera=2", u"http://h/a.jpg#camera=2"},
    {"FieldWithAColon", u"http://h/channel=1/password:secret8/x",
     u"http://h/channel=1/password:***/x"},
    {"FieldWithAColonAtTheEnd", u"http://h:81/password:secret8", u"http://h:81/password:***"},
    {"NumberWithAColon", u"http://h/pin:1234", u"http://h/pin:***"},
    {"ColonBeforeAnEqualsSign", u"http://h/password:secret8=1", u"http://h/password:***"},
    {"ColonInTheNameOfAField", u"http://h/a?password:secret8=1", u"http://h/a?password=***"},
    {"HarmlessFieldWithAColon", u"http://h/channel:1/x.jpg", u"http://h/channel:1/x.jpg"},
    {"TimeInThePath", u"http://h/12:30:45/x.jpg", u"http://h/12:30:45/x.jpg"},
    {"AlternativesInThePath", u"http://h/<one:two>/x.jpg", u"http://h/<one:two>/x.jpg"},
    {"ColonBehindAnAddress", u"http://h/a.jpg: not found", u"http://h/a.jpg: not found"},
    {"FieldBehindAColonAndABlank", u"http://h/a: b:secret8", u"http://h/a:***"},
    {"PortBehindACamera", u"Camera 0:1: http://h:81/a.jpg", u"Camera 0:1: http://h:81/a.jpg"},
    {"PortWithoutAScheme", u"h:81/a.jpg", u"h:81/a.jpg"},
    {"BracketsInTheName", u"http://h/a?camera=1&x[secret8]=1", u"http://h/a?camera=1&x=***"},
    {"CodedBracketsInTheName", u"http://h/a?x%5Bsecret8%5D=1", u"http://h/a?x=***"},
    {"BracketsBehindAHarmlessName", u"http://h/a?camera[secret8]=1", u"http://h/a?camera=***"},
    {"BracketsInThePath", u"http://h/x[secret8]=1/a.jpg", u"http://h/x=***/a.jpg"},
    {"FieldBehindANumberSign", u"http://h/a.jpg#token=secret8", u"http://h/a.jpg#token=***"},
    {"FieldsBehindTheHost", u"http://h?user=me&camera=3", u"http://h?user=***&camera=3"},
    {"FieldsWithoutScheme", u"h/a.cgi?token=secret8", u"h/a.cgi?token=***"},
    {"AddressInAField", u"http://h/a?url=http://cam/secret8", u"http://h/a?url=***"},
    {"FieldsInAlternatives", u"http://h/<a?pwd=x:b?pwd=secret8>.jpg",
     u"http://h/<a?pwd=***?pwd=***"},
    {"NameInCapitals", u"http://h/a.cgi?PassWord=secret8&CAMERA=4",
     u"http://h/a.cgi?PassWord=***&CAMERA=4"},
    {"NothingSecret", u"http://10.0.0.5:81/snap.cgi?res=2", u"http://10.0.0.5:81/snap.cgi?res=2"},
    {"ASize", u"http://h/a?resolution=1280x720&quality=0.8",
     u"http://h/a?resolution=1280x720&quality=0.8"},
    {"AListOfNumbers", u"http://h/a?size=640,480&id=7", u"http://h/a?size=640,480&id=7"},
    {"Base64WithoutName", u"http://h/a?YWRtaW46Z2VoZWltMQ==", u"http://h/a?***"},
    {"Base64WithoutNameAndOnePadding", u"http://h/a?YWRtaW46Z2VoZWltMTI=&camera=1",
     u"http://h/a?***&camera=1"},
    {"Base64BehindASemicolon", u"http://h/a;YWRtaW46Z2VoZWltMQ==/b.jpg", u"http://h/a;***/b.jpg"},
    {"Base64InThePath", u"http://h/YWRtaW46Z2VoZWltMQ==/b.jpg", u"http://h/***/b.jpg"},
    {"HarmlessFieldWithEmptyValue", u"http://h/a?camera=&size=1", u"http://h/a?camera=&size=1"},
    {"FieldWithEmptyValue", u"http://h/a?pwd=&size=1", u"http://h/a?***&size=1"},
    {"CodedAddressInThePath", u"http://h/proxy/http%3A%2F%2Fadmin%3Ageheim%40cam%2Fa.jpg",
     u"http://h/proxy/***"},
    {"CodedAddressInLowerCase", u"http://h/http%3a%2f%2fadmin%3ageheim%40cam%2fa.jpg",
     u"http://h/***"},
    {"CodedTwice", u"http://h/http%253A%252F%252Fadmin%253Ageheim%2540cam/a.jpg",
     u"http://h/***/a.jpg"},
    {"CodedFieldInThePath", u"http://h/snap%3Fpassword%3Dgeheim", u"http://h/***"},
    {"CodedFieldBeforeAnEqualsSign", u"http://h/snap%3Fpassword%3Dgeheim=1/a.jpg",
     u"http://h/***/a.jpg"},
    {"CodedFieldInAName", u"http://h/a?b%26pwd%3Dgeheim=1", u"http://h/a?***"},
    {"HarmlessCodes", u"http://h/a%2Fb%3F%4c%20c.jpg", u"http://h/a%2Fb%3F%4c%20c.jpg"},
    {"CutBeforeTheAtSign", u"http://admin:geheimgeheim", u"http://***"},
    {"CutBehindASlashInThePassword", u"http://admin:ge/heim", u"http://***"},
    {"CutInBrackets", u"(http://admin:geheim", u"(http://***"},
    {"AtSignForgotten", u"http://admin:geheim.10.0.0.5/a.jpg", u"http://***"},
    {"PortAlone", u"http://h:81", u"http://h:81"},
    {"PortInBrackets", u"(http://h:81)", u"(http://h:81)"},
    {"PortAndField", u"http://h:81?size=1", u"http://h:81?size=1"},
    {"ColonInASentence", u"Connection to tcp://h:554: refused",
     u"Connection to tcp://h:554: refused"},
    {"HostInASentence", u"http://h: refused", u"http://h: refused"},
    {"NumberedHostWithoutUser", u"http://[fe80::1]:81/a", u"http://[fe80::1]:81/a"},
    {"AlternativesInTheHost", u"http://cam<1:two>/a.jpg", u"http://cam<1:two>/a.jpg"},
    {"RowOfTheTable", u"0:10", u"0:10"},
    {"LongRowOfTheTable", u"10:0", u"10:0"},
    {"ChoiceWithAColon", u"clearly:five", u"clearly:five"},
    {"FileWithATime", u"shot 14:05.csv", u"shot 14:05.csv"},
    {"SentenceWithoutAnAddress", u"Error opening input: Connection refused",
     u"Error opening input: Connection refused"},
    {"NothingButAHost", u"http://h", u"http://h"},
    {"NothingButAScheme", u"http://", u"http://"},
    {"NothingButAnAtSign", u"@", u""},
    {"Empty", u"", u""},
};

INSTANTIATE_TEST_SUITE_P(Credentials, WithoutCredentials, testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.name); });

class AddressWithoutCredentials : public testing::TestWithParam<ShownRow>
{
};

TEST_P(AddressWithoutCredentials, ShowsNoLoginThatIsBeingTyped)
{
    EXPECT_EQ(addressWithoutCredentials(QString::fromUtf16(GetParam().given)),
              QString::fromUtf16(GetParam().shown));
}

TEST_P(AddressWithoutCredentials, ShowsTheSameWhenItIsAskedTwice)
{
    const QString shown = QString::fromUtf16(GetParam().shown);
    EXPECT_EQ(addressWithoutCredentials(shown), shown);
}

const ShownRow kTyped[] = {
    {"TypedLogin", u"admin:Geheim7", u"admin:***"},
    {"TypedLoginWithASlash", u"u:p/Geheim7", u"u:***"},
    {"TypedLoginWithAQuestionMark", u"admin:7?camera", u"admin:***"},
    {"TypedLoginWithASemicolon", u"admin:12;Geheim7/a", u"admin:***"},
    {"TypedLoginWithAColon", u"admin:12:Geheim7", u"admin:***"},
    {"TypedLoginWithABlank", u"admin:12 Geheim7", u"admin:***"},
    {"TypedLoginWithALongNumber", u"admin:123456", u"admin:***"},
    {"TypedLoginWithALongNumberAndASlash", u"admin:123456/a.jpg", u"admin:***"},
    {"TypedLoginWithANumberOfADottedUser", u"my.name:123456", u"my.name:***"},
    {"TypedPassword", u":Geheim7", u":***"},
    {"TypedNumber", u"admin:1234", u"admin:***"},
    {"TypedUserWithABlank", u"my name:Geheim7", u"my name:***"},
    {"TypedUserWithABracket", u"[admin:Geheim7", u"[admin:***"},
    {"TypedUserWithAnAngle", u"a<dmin:Geheim7", u"a<dmin:***"},
    {"TypedUserWithAnAmpersand", u"a&b:p/Geheim7", u"a&***"},
    {"TypedUserAlone", u"admin:", u"admin:"},
    {"TypedScheme", u"http:/", u"http:/"},
    {"PortBeforeAPath", u"h:81/a.jpg", u"h:81/a.jpg"},
    {"PortOfANumberedHost", u"10.0.0.5:81", u"10.0.0.5:81"},
    {"PortOfThisMachine", u"LocalHost:8080", u"LocalHost:8080"},
    {"PortInLongForm", u"[fe80::1]:81", u"[fe80::1]:81"},
    {"PortBeforeAField", u"cam.lan:81?size=1", u"cam.lan:81?size=1"},
    {"AlternativesWithoutAScheme", u"cam<1:two>.lan:81/a.jpg", u"cam<1:two>.lan:81/a.jpg"},
    {"ColonBehindTheHost", u"cam.lan/channel:1/a.jpg", u"cam.lan/channel:1/a.jpg"},
    {"PortBehindAZone", u"[fe80::1%eth0]:81/a.jpg", u"[fe80::1%eth0]:81/a.jpg"},
    {"LoginBehindItsHost", u"http://me:s@cam/a.jpg", u"http://cam/a.jpg"},
};

INSTANTIATE_TEST_SUITE_P(Credentials, AddressWithoutCredentials, testing::ValuesIn(kTyped),
                         [](const auto &info) { return std::string(info.param.name); });

const QString kSecret = QStringLiteral("s3cret");

// Places where makers of cameras, and their users, put a password.
constexpr std::array kFieldPlaces = {
    u"http://h/a?%1=s3cret",
    u"http://h/a?camera=1&%1=s3cret",
    u"http://h/a;%1=s3cret",
    u"http://h/%1=s3cret/a.jpg",
    u"h:81/a.cgi?%1=s3cret&size=2",
    u"http://u:p@h/a?%1=s3cret",
    u"(http://h/a?camera=1;%1=s3cret)",
};

class SecretField : public testing::TestWithParam<const char *>
{
};

TEST_P(SecretField, IsMaskedInEveryPlace)
{
    const QString name = QString::fromLatin1(GetParam());
    for (const char16_t *const place : kFieldPlaces) {
        for (const QString &spelling : {name, name.toUpper()}) {
            const QString address = QString::fromUtf16(place).arg(spelling);
            const QString shown = withoutCredentials(address);
            EXPECT_FALSE(shown.contains(kSecret)) << address.toStdString();
            EXPECT_TRUE(shown.contains(spelling + QStringLiteral("=***"))) << shown.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Credentials, SecretField,
                         testing::Values("user", "usr", "username", "login", "loginuse", "loginpas",
                                         "account", "pw", "pwd", "pas", "pass", "passwd",
                                         "password", "psw", "secret", "token", "auth", "u", "p",
                                         "key", "api_key", "apikey", "access_token", "passwort",
                                         "motdepasse", "mdp", "session", "sid", "sessionid",
                                         "userid", "cameraPassword", "x", "_", "hash", "sign"));

// Settings and folder names keep no more than the beginning of a long address.
TEST(CutAddress, ShowsNothingOfAUserWithoutHost)
{
    const QString user(254, u'x');
    EXPECT_EQ(withoutCredentials(QStringLiteral("http://") + user), QStringLiteral("http://***"));
    EXPECT_EQ(withoutCredentials(user), QStringLiteral("***"));
    const QString host = QStringLiteral("http://") + QString(253, u'x') + QStringLiteral("/a.jpg");
    EXPECT_EQ(withoutCredentials(host), host);
}

struct PathRow
{
    const char *name;
    const char16_t *given;
    const char16_t *shown;
};

class PathWithoutCredentials : public testing::TestWithParam<PathRow>
{
};

TEST_P(PathWithoutCredentials, ShowsNoPasswordOfACamera)
{
    EXPECT_EQ(pathWithoutCredentials(QString::fromUtf16(GetParam().given)),
              QString::fromUtf16(GetParam().shown));
}

INSTANTIATE_TEST_SUITE_P(
    Credentials, PathWithoutCredentials,
    testing::Values(
        PathRow{"CameraWithPassword", u"/srv/in/http%3A%2F%2Fadmin%3Ageheim%40cam%2Fa/",
                u"/srv/in/http%3A%2F%2Fcam%2Fa/"},
        PathRow{"ImageOfACameraWithPassword", u"/in/http%3A%2F%2Feva%3Ax%40cam%2Fa%2Ejpg/2006.jpg",
                u"/in/http%3A%2F%2Fcam%2Fa%2Ejpg/2006.jpg"},
        PathRow{"CameraWithAField", u"/in/http%3A%2F%2Fcam%2Fa%3Fpwd%3Dgeheim",
                u"/in/http%3A%2F%2Fcam%2Fa%3Fpwd%3D%2A%2A%2A"},
        PathRow{"CameraWithoutPassword", u"/in/http%3A%2F%2Fcam%2Fa", u"/in/http%3A%2F%2Fcam%2Fa"},
        PathRow{"OtherFolder", u"/home/me@home/a=b/100%", u"/home/me@home/a=b/100%"}),
    [](const auto &info) { return std::string(info.param.name); });

// Whatever characters a password has, it is removed with everything before the last "@".
class PasswordSign : public testing::TestWithParam<char>
{
};

TEST_P(PasswordSign, ShowsNothingOfThePassword)
{
    const QString password = kSecret + QLatin1Char(GetParam()) + kSecret;
    for (const char *const scheme :
         {"http://", "https://", "http:/", "", "(http://", "\"http://"}) {
        const QString begin = QLatin1String(scheme);
        const QString shown =
            withoutCredentials(begin + QStringLiteral("me:") + password + QStringLiteral("@cam/a"));
        EXPECT_FALSE(shown.contains(kSecret)) << shown.toStdString();
        EXPECT_EQ(shown, begin + QStringLiteral("cam/a"));
    }
}

INSTANTIATE_TEST_SUITE_P(Credentials, PasswordSign,
                         testing::Values(' ', '!', '"', '#', '$', '%', '&', '\'', '(', ')', '*',
                                         '+', ',', '-', '.', '/', ':', ';', '<', '=', '>', '?', '@',
                                         '[', '\\', ']', '^', '_', '`', '{', '|', '}', '~'));

TEST(Credentials, OfAnAddressThatBeginsBehindAnotherAreNotShownEither)
{
    const QString shown = withoutCredentials(QStringLiteral("p@host/a?x(http://u:secret<"));
    EXPECT_EQ(shown, QStringLiteral("host/a?x(http://***"));
    EXPECT_EQ(withoutCredentials(shown), shown);
}

} // namespace
} // namespace velmora::test
