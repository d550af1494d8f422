// The text of a settings file in private-profile form: sections in brackets, "key=value" lines.
// Lookups and edits work on the bytes; whatever an edit does not touch stays as it is.
#pragma once

#include <QByteArray>

#include <compare>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

/// One change to a text: `inserted` replaces `removed` bytes at `offset`.
struct ProfileEdit
{
    qsizetype offset = 0;
    qsizetype removed = 0;
    QByteArray inserted;

    /// True when the change alters nothing.
    [[nodiscard]] bool isEmpty() const { return removed == 0 && inserted.isEmpty(); }
};

/// What a key must hold for a value to be stored; cut to size - 1 bytes, as it was read.
struct ProfileCondition
{
    QByteArray section;
    QByteArray key;
    QByteArray value;
    qsizetype size = 0;
};

/// A value that is to be stored.
struct ProfileValue
{
    QByteArray section;
    QByteArray key;
    QByteArray value;
    std::optional<ProfileCondition> only = std::nullopt;
};

/// A parsed settings text. Its rules: lines end with CR, LF or CR LF; only a leading ";" makes a
/// comment; names ignore the case of ASCII letters; of sections or keys with the same name the
/// first counts; blanks and tabs around names and values are ignored, but only blanks around a name
/// being looked up.
class ProfileText
{
public:
    explicit ProfileText(QByteArray bytes);

    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

    /// The value of a key without its pair of matching quotes, or nothing when section or key is
    /// missing. The view lives as long as this object.
    [[nodiscard]] std::optional<QByteArrayView> value(QByteArrayView section,
                                                      QByteArrayView key) const;

    /// True when the key holds that value, which is empty for a missing one.
    [[nodiscard]] bool meets(const ProfileCondition &condition) const;

    /// Makes lookups in long sections quick; worth it for a text with many lookups.
    void index();

    /// The change that gives a key this value, exactly as given, or removes the key (no value). A
    /// new section goes to the end; a new key goes after the last key of its section; an existing
    /// key keeps its place and spelling. Added lines end with CR LF; so does an unended last line
    /// once its value is replaced.
    [[nodiscard]] ProfileEdit edit(QByteArrayView section, QByteArrayView key,
                                   std::optional<QByteArrayView> value) const;

    /// The changes that give different keys these values, each as if it were the only one. Keys
    /// that have their value already need none.
    [[nodiscard]] std::vector<ProfileEdit> edits(std::span<const ProfileValue> values) const;

    /// The text in which different keys have these values: as if they were edited one by one.
    [[nodiscard]] QByteArray with(std::span<const ProfileValue> values) const;

private:
    struct IndexedKey
    {
        std::size_t hash = 0; // of the name, ignoring case
        qsizetype lineBegin = 0;

        auto operator<=>(const IndexedKey &) const = default;
    };

    struct Section
    {
        QByteArrayView name;
        qsizetype bodyBegin = 0;           // after the header line
        qsizetype bodyEnd = 0;             // the next header line, or the end
        std::vector<IndexedKey> keys = {}; // in order; empty until indexed
    };

    [[nodiscard]] const Section *find(QByteArrayView section) const;
    [[nodiscard]] bool areIndependent(std::span<const ProfileValue> values) const;
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
