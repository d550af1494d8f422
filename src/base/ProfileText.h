// The text of a settings file in private-profile form: sections in brackets, "key=value" lines.
// Lookups and edits work on the bytes; whatever an edit does not touch stays as it stands.
#pragma once

#include <QByteArray>

#include <compare>
#include <cstddef>
#include <optional>
#include <vector>

namespace velmora {

/// One change of a text: `removed` bytes at `offset` give way to `inserted`.
struct ProfileEdit
{
    qsizetype offset = 0;
    qsizetype removed = 0;
    QByteArray inserted;

    /// True when the change leaves every byte where and as it is.
    [[nodiscard]] bool isEmpty() const { return removed == 0 && inserted.isEmpty(); }
};

/// A parsed settings text. Rules of the form:
/// lines end with CR, LF or CR LF; only a leading ";" makes a comment; names compare without the
/// case of ASCII letters; the first section of a name and the first key of a name in it count;
/// blanks and tabs around names and values do not; of a name asked for, blanks alone are taken off.
class ProfileText
{
public:
    explicit ProfileText(QByteArray bytes);

    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

    /// The value of a key with one pair of matching quotes taken off, or nothing when section or
    /// key is missing. The view lives as long as this object.
    [[nodiscard]] std::optional<QByteArrayView> value(QByteArrayView section,
                                                      QByteArrayView key) const;

    /// Makes lookups in long sections quick; worth it for a text in which many are made.
    void index();

    /// The change that gives a key this value, exactly as given, or takes the key out (no value). A
    /// new section goes to the end; a new key goes behind the last key of its section; a key that
    /// exists keeps its place and spelling. Lines added end with CR LF, and so does a last line
    /// without an end whose value is replaced.
    [[nodiscard]] ProfileEdit edit(QByteArrayView section, QByteArrayView key,
                                   std::optional<QByteArrayView> value) const;

private:
    struct IndexedKey
    {
        std::size_t hash = 0; // of the name without its case
        qsizetype lineBegin = 0;

        auto operator<=>(const IndexedKey &) const = default;
    };

    struct Section
    {
        QByteArrayView name;
        qsizetype bodyBegin = 0;           // behind the header line
        qsizetype bodyEnd = 0;             // the next header line, or the end
        std::vector<IndexedKey> keys = {}; // in order; empty while they are not indexed
    };

    [[nodiscard]] const Section *find(QByteArrayView section) const;
    [[nodiscard]] ProfileEdit replaceValue(qsizetype lineEnd, qsizetype valueBegin,
                                           QByteArrayView value) const;
    [[nodiscard]] ProfileEdit appendSection(QByteArrayView section, QByteArrayView line) const;
    [[nodiscard]] ProfileEdit insertLine(qsizetype offset, const QByteArray &line) const;

    QByteArray bytes_;
    std::vector<Section> sections_;
};

/// The value of one key, found in one scan without an index; same rules as ProfileText::value.
[[nodiscard]] std::optional<QByteArrayView>
findProfileValue(QByteArrayView bytes, QByteArrayView section, QByteArrayView key);

} // namespace velmora
