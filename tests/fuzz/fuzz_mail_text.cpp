// Fuzzes the text of a mail: whatever names, subject and body hold, it is lines of ASCII that no
// server refuses, its headers are the expected ones, and its body is read back unchanged. Input:
// two lengths (name, subject), those two texts, then the body.
#include "Require.h"
#include "mail/MailText.h"
#include "support/MailReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

constexpr qsizetype kLongestLine = 998;
constexpr unsigned char kLastAscii = 0x7E;

QString taken(QByteArrayView &rest, qsizetype length)
{
    const QByteArrayView part = rest.first(std::min(length, rest.size()));
    rest = rest.sliced(part.size());
    return QString::fromUtf8(part);
}

void checkLines(const QByteArray &text)
{
    require(text.endsWith("\r\n"), "the last line has an end");
    qsizetype begin = 0;
    for (qsizetype end = text.indexOf("\r\n"); end >= 0; end = text.indexOf("\r\n", begin)) {
        const QByteArrayView line = QByteArrayView(text).sliced(begin, end - begin);
        require(line.size() <= kLongestLine, "no line is longer than servers take");
        require(std::ranges::all_of(line,
                                    [](char c) {
                                        const auto byte = static_cast<unsigned char>(c);
                                        return (byte >= ' ' && byte <= kLastAscii) || c == '\t';
                                    }),
                "a line is plain ASCII without a line end of its own");
        begin = end + 2;
    }
}

QString withoutLineEnds(QString text)
{
    return text.remove(u'\r').remove(u'\n');
}

void check(const MailLetter &letter)
{
    const QByteArray text = mailText(letter);
    checkLines(text);
    const test::ReadMail mail = test::readMail(text);
    require(mail.names.size() == 9, "text of the user makes no header");
    require(mail.raw("Message-ID") == "<abc123@example.org>", "the headers are whole");
    require(withoutLineEnds(QString::fromUtf8(mail.body)) == withoutLineEnds(letter.body),
            "the body is read back");
}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace velmora;
    QByteArrayView rest(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (rest.size() < 2) {
        return 0;
    }
    const auto nameLength = static_cast<unsigned char>(rest[0]);
    const auto subjectLength = static_cast<unsigned char>(rest[1]);
    rest = rest.sliced(2);
    const QString name = fuzz::taken(rest, nameLength);
    const QString subject = fuzz::taken(rest, subjectLength);
    fuzz::check({{name, "cam@example.org"},
                 {{name, "guard@example.org"}},
                 subject,
                 QString::fromUtf8(rest),
                 WallTime{std::chrono::seconds{1'141'740'309}},
                 std::chrono::hours{1},
                 "abc123"});
    return 0;
}
