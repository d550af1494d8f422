// Fuzzes the settings text: any bytes can be parsed, an edit touches one line, and what was set is
// read back. Input: four lengths (section, key, other key, value), those four texts, then the
// settings.
#include "Require.h"
#include "base/ProfileText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmora::fuzz {
namespace {

using Value = std::optional<QByteArrayView>;

constexpr qsizetype kMaxPart = 16;

struct Input
{
    QByteArray section;
    QByteArray key;
    QByteArray other;
    QByteArray value;
    QByteArray text;
};

QByteArray taken(QByteArrayView &rest, qsizetype length)
{
    const QByteArrayView part = rest.first(std::min(length, rest.size()));
    rest = rest.sliced(part.size());
    return part.toByteArray();
}

Input inputFrom(QByteArrayView bytes)
{
    const QByteArray lengths = taken(bytes, 4).leftJustified(4, '\0');
    const auto length = [&lengths](qsizetype part) {
        return static_cast<unsigned char>(lengths[part]) % kMaxPart;
    };
    Input input;
    input.section = taken(bytes, length(0));
    input.key = taken(bytes, length(1));
    input.other = taken(bytes, length(2));
    input.value = taken(bytes, length(3));
    input.text = bytes.toByteArray();
    return input;
}

QByteArrayView without(QByteArrayView text, QByteArrayView blanks)
{
    while (!text.isEmpty() && blanks.contains(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && blanks.contains(text.back())) {
        text.chop(1);
    }
    return text;
}

bool holdsLineEnd(QByteArrayView text)
{
    return text.contains('\r') || text.contains('\n');
}

/// True for a name that is found in a text exactly as asked for.
bool isPlain(QByteArrayView name, char closing)
{
    const QByteArrayView bare = without(name, " ");
    return without(bare, " \t").size() == bare.size() && !holdsLineEnd(bare) &&
           !bare.contains(closing);
}

bool isPlainKey(QByteArrayView key)
{
    const QByteArrayView bare = without(key, " ");
    return isPlain(key, '=') && !bare.startsWith(';') && !bare.startsWith('[');
}

bool areSameName(QByteArrayView a, QByteArrayView b)
{
    return without(a, " ").compare(without(b, " "), Qt::CaseInsensitive) == 0;
}

QByteArrayView asRead(QByteArrayView value)
{
    const QByteArrayView bare = without(value, " \t");
    const bool quoted = bare.size() >= 2 && bare.front() == bare.back() &&
                        (bare.front() == '"' || bare.front() == '\'');
    return quoted ? bare.sliced(1, bare.size() - 2) : bare;
}

bool areEqual(Value a, Value b)
{
    return a.has_value() == b.has_value() && (!a || *a == *b);
}

QByteArray applied(const QByteArray &text, const ProfileEdit &edit)
{
    require(edit.offset >= 0 && edit.removed >= 0 && edit.offset + edit.removed <= text.size(),
            "an edit stays within the text");
    return QByteArray(text).replace(edit.offset, edit.removed, edit.inserted);
}

void checkLookup(const Input &in, const ProfileText &text)
{
    require(text.bytes() == in.text, "parsing keeps the bytes");
    require(areEqual(text.value(in.section, in.key), findProfileValue(in.text, in.section, in.key)),
            "both lookups find the same value");
}

void checkSet(const Input &in, const ProfileText &text)
{
    const ProfileEdit edit = text.edit(in.section, in.key, QByteArrayView(in.value));
    require(!holdsLineEnd(QByteArrayView(in.text).sliced(edit.offset, edit.removed)),
            "a value that is set takes the place of a value alone");
    const ProfileText after(applied(in.text, edit));
    if (!isPlain(in.section, ']') || !isPlainKey(in.key) || holdsLineEnd(in.value)) {
        return;
    }
    require(areEqual(after.value(in.section, in.key), asRead(in.value)),
            "what was set is read back");
    require(after.edit(in.section, in.key, QByteArrayView(in.value)).isEmpty(),
            "what stands is not written again");
    if (!areSameName(in.key, in.other)) {
        require(areEqual(after.value(in.section, in.other), text.value(in.section, in.other)),
                "other keys keep their values");
    }
}

void checkRemoval(const Input &in, const ProfileText &text)
{
    const ProfileEdit edit = text.edit(in.section, in.key, std::nullopt);
    require(edit.inserted.isEmpty(), "taking a key out adds nothing");
    require(edit.isEmpty() == !text.value(in.section, in.key),
            "a key that is there can be taken out");
    QByteArrayView line = QByteArrayView(in.text).sliced(edit.offset, edit.removed);
    line.chop(line.endsWith("\r\n") ? 2 : line.endsWith('\n') || line.endsWith('\r') ? 1 : 0);
    require(!holdsLineEnd(line), "one line is taken out");
    if (!areSameName(in.key, in.other)) {
        const ProfileText after(applied(in.text, edit));
        require(areEqual(after.value(in.section, in.other), text.value(in.section, in.other)),
                "other keys keep their values");
    }
}

void check(const Input &in)
{
    const ProfileText text(in.text);
    checkLookup(in, text);
    checkSet(in, text);
    checkRemoval(in, text);
}

} // namespace
} // namespace velmora::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    velmora::fuzz::check(velmora::fuzz::inputFrom(
        QByteArrayView(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size))));
    return 0;
}
