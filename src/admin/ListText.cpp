#include "admin/ListText.h"

#include "base/AnsiText.h"

#include <QStringDecoder>

namespace velmora {
namespace {

constexpr qsizetype kProbe = 512;

qsizetype zerosAt(QByteArrayView bytes, qsizetype first)
{
    qsizetype zeros = 0;
    for (qsizetype i = first; i < qMin(bytes.size(), kProbe); i += 2) {
        zeros += bytes[i] == '\0' ? 1 : 0;
    }
    return zeros;
}

// In UTF-16, every other byte of a text in a Western language is zero.
std::optional<QStringConverter::Encoding> encodingOf(QByteArrayView bytes)
{
    if (const auto marked = QStringConverter::encodingForData(bytes)) {
        return marked;
    }
    const qsizetype pairs = qMin(bytes.size(), kProbe) / 2;
    if (pairs > 0 && zerosAt(bytes, 1) * 2 > pairs) {
        return QStringConverter::Utf16LE;
    }
    if (pairs > 0 && zerosAt(bytes, 0) * 2 > pairs) {
        return QStringConverter::Utf16BE;
    }
    return std::nullopt;
}

bool isText(const QString &text)
{
    return std::ranges::none_of(
        text, [](QChar c) { return c.unicode() < u' ' && c != u'\n' && c != u'\r' && c != u'\t'; });
}

std::optional<QString> decoded(QByteArrayView bytes, QStringConverter::Encoding encoding)
{
    QStringDecoder decoder(encoding);
    QString text = decoder.decode(bytes);
    return decoder.hasError() || !isText(text) ? std::nullopt : std::optional(std::move(text));
}

class TableReader
{
public:
    TableReader(const QString &text, QChar separator)
        : text_(text)
        , separator_(separator)
    {
    }

    std::vector<TableLine> read()
    {
        while (at_ < text_.size()) {
            if (isComment()) {
                skipLine();
            } else {
                readLine();
            }
        }
        return std::move(lines_);
    }

private:
    // A field in quotes may begin with the same character.
    [[nodiscard]] bool isComment() const
    {
        qsizetype at = at_;
        while (at < text_.size() && text_[at] == u' ') {
            ++at;
        }
        return at < text_.size() && text_[at] == u'#';
    }

    void skipLine()
    {
        while (at_ < text_.size() && text_[at_] != u'\n' && text_[at_] != u'\r') {
            ++at_;
        }
        skipLineEnd();
    }

    void readLine()
    {
        TableLine line{number_, {}};
        bool more = true;
        while (more) {
            line.fields.append(readField().trimmed());
            more = at_ < text_.size() && text_[at_] == separator_;
            at_ += more ? 1 : 0;
        }
        skipLineEnd();
        if (line.fields.size() > 1 || !line.fields.first().isEmpty()) {
            lines_.push_back(std::move(line));
        }
    }

    QString readField()
    {
        if (at_ < text_.size() && text_[at_] == u'"') {
            ++at_;
            return readQuoted() + readPlain();
        }
        return readPlain();
    }

    QString readQuoted()
    {
        QString field;
        for (; at_ < text_.size(); ++at_) {
            if (text_[at_] == u'"' && text_.mid(at_ + 1, 1) != QStringLiteral("\"")) {
                ++at_;
                break;
            }
            at_ += text_[at_] == u'"' ? 1 : 0;
            number_ += text_[at_] == u'\n' ? 1 : 0;
            field += text_[at_];
        }
        return field;
    }

    QString readPlain()
    {
        const qsizetype begin = at_;
        while (at_ < text_.size() && text_[at_] != separator_ && text_[at_] != u'\n' &&
               text_[at_] != u'\r') {
            ++at_;
        }
        return text_.sliced(begin, at_ - begin);
    }

    void skipLineEnd()
    {
        at_ += at_ < text_.size() && text_[at_] == u'\r' ? 1 : 0;
        at_ += at_ < text_.size() && text_[at_] == u'\n' ? 1 : 0;
        ++number_;
    }

    const QString &text_;
    QChar separator_;
    qsizetype at_ = 0;
    int number_ = 1;
    std::vector<TableLine> lines_;
};

} // namespace

std::optional<QString> listText(QByteArrayView bytes)
{
    if (const auto encoding = encodingOf(bytes)) {
        return decoded(bytes, *encoding);
    }
    if (auto text = decoded(bytes, QStringConverter::Utf8)) {
        return text;
    }
    QString text = fromAnsi(bytes);
    return isText(text) ? std::optional(std::move(text)) : std::nullopt;
}

std::vector<TableLine> tableLines(const QString &text, QChar separator)
{
    return TableReader(text, separator).read();
}

QString tableField(const QString &field)
{
    const bool needsQuotes = field.contains(u',') || field.contains(u'"') ||
                             field.startsWith(u' ') || field.startsWith(u'#') ||
                             field.endsWith(u' ');
    return needsQuotes ? u'"' + QString(field).replace(u'"', QStringLiteral("\"\"")) + u'"' : field;
}

} // namespace velmora
