#include "base/ProfileText.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

namespace velmora {
namespace {

constexpr qsizetype kUsualSectionBytes = 128;
constexpr qsizetype kMostExpected = 256;

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

QByteArrayView trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && isBlank(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && isBlank(text.back())) {
        text.chop(1);
    }
    return text;
}

// A name being looked up loses its blanks only: one with a tab around it matches nothing.
QByteArrayView trimmedBlanks(QByteArrayView text)
{
    while (!text.isEmpty() && text.front() == ' ') {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && text.back() == ' ') {
        text.chop(1);
    }
    return text;
}

char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Compared from their ends, where names such as "lst0" and "lst1" differ.
bool sameName(QByteArrayView a, QByteArrayView b)
{
    return a.size() == b.size() && std::equal(a.rbegin(), a.rend(), b.rbegin(), [](char x, char y) {
               return lowerCase(x) == lowerCase(y);
           });
}

QByteArrayView withoutQuotes(QByteArrayView value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

struct Line
{
    qsizetype begin = 0;
    qsizetype end = 0;  // after the last character
    qsizetype next = 0; // after the line end
};

// Position of the first line end at or after `from`, or the size of the text. Searches a short way
// at a time, since a text may have line ends of one kind only.
qsizetype nextLineEnd(QByteArrayView bytes, qsizetype from)
{
    constexpr qsizetype kWay = 128;
    for (; from < bytes.size(); from += kWay) {
        const QByteArrayView way = bytes.sliced(from, std::min(kWay, bytes.size() - from));
        const qsizetype feed = way.indexOf('\n');
        const qsizetype carriage = way.first(feed < 0 ? way.size() : feed).indexOf('\r');
        if (carriage >= 0 || feed >= 0) {
            return from + (carriage >= 0 ? carriage : feed);
        }
    }
    return bytes.size();
}

Line lineAt(QByteArrayView bytes, qsizetype begin)
{
    const qsizetype end = nextLineEnd(bytes, begin);
    qsizetype next = end;
    if (next < bytes.size() && bytes[next] == '\r') {
        ++next;
        next += next < bytes.size() && bytes[next] == '\n' ? 1 : 0;
    } else if (next < bytes.size()) {
        ++next;
    }
    return {begin, end, next};
}

// A bracket opens a section only if nothing but blanks precede it on its line.
bool startsLine(QByteArrayView bytes, qsizetype position)
{
    while (position > 0 && isBlank(bytes[position - 1])) {
        --position;
    }
    return position == 0 || isLineEnd(bytes[position - 1]);
}

// Position of the first "[" at or after `from` that opens a section, or the size of the text.
qsizetype nextHeader(QByteArrayView bytes, qsizetype from)
{
    while (from < bytes.size()) {
        const void *const hit =
            std::memchr(bytes.data() + from, '[', static_cast<std::size_t>(bytes.size() - from));
        if (hit == nullptr) {
            break;
        }
        const qsizetype position = static_cast<const char *>(hit) - bytes.data();
        if (startsLine(bytes, position)) {
            return position;
        }
        from = position + 1;
    }
    return bytes.size();
}

QByteArrayView headerName(QByteArrayView line)
{
    const qsizetype close = line.indexOf(']');
    return trimmed(close < 0 ? line.sliced(1) : line.sliced(1, close - 1));
}

struct KeyLine
{
    Line line;
    QByteArrayView name;
    qsizetype valueBegin = 0; // after the "="
};

std::optional<KeyLine> keyLine(QByteArrayView bytes, const Line &line)
{
    const QByteArrayView text = bytes.sliced(line.begin, line.end - line.begin);
    const qsizetype equals = text.indexOf('=');
    if (equals < 0) {
        return std::nullopt;
    }
    const QByteArrayView name = trimmed(text.first(equals));
    if (name.startsWith(';')) {
        return std::nullopt;
    }
    return KeyLine{line, name, line.begin + equals + 1};
}

// Tells most other lines at a glance.
bool mayBeginWith(QByteArrayView key, QByteArrayView bytes, const Line &line)
{
    qsizetype at = line.begin;
    while (at < line.end && isBlank(bytes[at])) {
        ++at;
    }
    return key.isEmpty() || (at < line.end && lowerCase(bytes[at]) == lowerCase(key.front()));
}

std::optional<KeyLine> findKey(QByteArrayView bytes, qsizetype begin, qsizetype end,
                               QByteArrayView key)
{
    const QByteArrayView body = bytes.first(end);
    while (begin < end) {
        const Line line = lineAt(body, begin);
        const std::optional<KeyLine> found =
            mayBeginWith(key, body, line) ? keyLine(body, line) : std::nullopt;
        if (found && sameName(found->name, key)) {
            return found;
        }
        begin = line.next;
    }
    return std::nullopt;
}

std::size_t hashOf(QByteArrayView name)
{
    return qHash(name.toByteArray().toLower());
}

// The first key of that name in a section of a ProfileText.
template <typename Section>
std::optional<KeyLine> findIn(QByteArrayView bytes, const Section &section, QByteArrayView key)
{
    const QByteArrayView name = trimmedBlanks(key);
    if (section.keys.empty()) {
        return findKey(bytes, section.bodyBegin, section.bodyEnd, name);
    }
    const QByteArrayView body = bytes.first(section.bodyEnd);
    for (const auto &candidate : std::ranges::equal_range(
             section.keys, hashOf(name), {}, [](const auto &known) { return known.hash; })) {
        const std::optional<KeyLine> found = keyLine(body, lineAt(body, candidate.lineBegin));
        if (found && sameName(found->name, name)) {
            return found;
        }
    }
    return std::nullopt;
}

QByteArrayView valueOf(QByteArrayView bytes, const KeyLine &key)
{
    return withoutQuotes(trimmed(bytes.sliced(key.valueBegin, key.line.end - key.valueBegin)));
}

// After the last key of a section's body, or at its start when it has none.
qsizetype behindLastKey(QByteArrayView bytes, qsizetype begin, qsizetype end)
{
    const QByteArrayView body = bytes.first(end);
    qsizetype behind = begin;
    while (begin < end) {
        const Line line = lineAt(body, begin);
        if (keyLine(body, line)) {
            behind = line.next;
        }
        begin = line.next;
    }
    return behind;
}

// Start of the line with a header's bracket.
qsizetype headerLineBegin(QByteArrayView bytes, qsizetype bracket)
{
    while (bracket > 0 && isBlank(bytes[bracket - 1])) {
        --bracket;
    }
    return bracket;
}

// The first section of a name with its header line; empty when there is none.
QByteArrayView findSection(QByteArrayView bytes, QByteArrayView section)
{
    const QByteArrayView wanted = trimmedBlanks(section);
    for (qsizetype bracket = nextHeader(bytes, 0); bracket < bytes.size();
         bracket = nextHeader(bytes, bracket + 1)) {
        const Line line = lineAt(bytes, bracket);
        if (sameName(headerName(bytes.sliced(bracket, line.end - bracket)), wanted)) {
            return bytes.sliced(bracket, nextHeader(bytes, line.next) - bracket);
        }
    }
    return {};
}

QByteArray withEach(QByteArray bytes, std::span<const ProfileValue> values)
{
    for (const ProfileValue &value : values) {
        const ProfileEdit edit = ProfileText(bytes).edit(value.section, value.key, value.value);
        bytes.replace(edit.offset, edit.removed, edit.inserted);
    }
    return bytes;
}

// Keys added at the same place stay in their order.
QByteArray withAll(QByteArrayView bytes, const std::vector<ProfileEdit> &edits)
{
    std::multimap<qsizetype, ProfileEdit> ordered;
    for (const ProfileEdit &edit : edits) {
        ordered.emplace(edit.offset, edit);
    }
    QByteArray result;
    result.reserve(bytes.size() + std::ssize(edits) * kUsualSectionBytes);
    qsizetype copied = 0;
    for (const auto &[offset, edit] : ordered) {
        result += bytes.sliced(copied, edit.offset - copied);
        result += edit.inserted;
        copied = edit.offset + edit.removed;
    }
    return result += bytes.sliced(copied);
}

} // namespace

ProfileText::ProfileText(QByteArray bytes)
    : bytes_(std::move(bytes))
{
    const QByteArrayView all(bytes_);
    sections_.reserve(
        static_cast<std::size_t>(std::min(all.size() / kUsualSectionBytes, kMostExpected)));
    for (qsizetype bracket = nextHeader(all, 0); bracket < all.size();) {
        const Line line = lineAt(all, bracket);
        const qsizetype following = nextHeader(all, line.next);
        sections_.push_back({headerName(all.sliced(bracket, line.end - bracket)), line.next,
                             headerLineBegin(all, following)});
        bracket = following;
    }
    if (!sections_.empty()) {
        sections_.back().bodyEnd = all.size();
    }
}

const ProfileText::Section *ProfileText::find(QByteArrayView section) const
{
    const QByteArrayView name = trimmedBlanks(section);
    const auto found =
        std::ranges::find_if(sections_, [&](const Section &s) { return sameName(s.name, name); });
    return found == sections_.end() ? nullptr : &*found;
}

std::optional<QByteArrayView> ProfileText::value(QByteArrayView section, QByteArrayView key) const
{
    const Section *const where = find(section);
    if (where == nullptr) {
        return std::nullopt;
    }
    const auto found = findIn(bytes_, *where, key);
    return found ? std::optional(valueOf(bytes_, *found)) : std::nullopt;
}

bool ProfileText::meets(const ProfileCondition &condition) const
{
    const QByteArrayView stored =
        value(condition.section, condition.key).value_or(QByteArrayView());
    return stored.first(std::min(stored.size(), condition.size - 1)) == condition.value;
}

void ProfileText::index()
{
    for (Section &section : sections_) {
        const QByteArrayView body = QByteArrayView(bytes_).first(section.bodyEnd);
        section.keys.clear();
        for (qsizetype begin = section.bodyBegin; begin < section.bodyEnd;) {
            const Line line = lineAt(body, begin);
            if (const auto key = keyLine(body, line)) {
                section.keys.push_back({hashOf(key->name), begin});
            }
            begin = line.next;
        }
        std::ranges::sort(section.keys);
    }
}

ProfileEdit ProfileText::edit(QByteArrayView section, QByteArrayView key,
                              std::optional<QByteArrayView> value) const
{
    const QByteArrayView name = trimmedBlanks(key);
    const Section *const where = find(section);
    const auto existing = where != nullptr ? findIn(bytes_, *where, name) : std::nullopt;
    if (!value) {
        return existing ? ProfileEdit{existing->line.begin,
                                      existing->line.next - existing->line.begin,
                                      {}}
                        : ProfileEdit{};
    }
    if (existing) {
        return replaceValue(existing->line.end, existing->valueBegin, *value);
    }
    const QByteArray line = name.toByteArray() + '=' + value->toByteArray() + "\r\n";
    return where != nullptr
               ? insertLine(behindLastKey(bytes_, where->bodyBegin, where->bodyEnd), line)
               : appendSection(trimmedBlanks(section), line);
}

std::vector<ProfileEdit> ProfileText::edits(std::span<const ProfileValue> values) const
{
    std::vector<ProfileEdit> edits;
    for (const ProfileValue &value : values) {
        ProfileEdit change = edit(value.section, value.key, value.value);
        if (!change.isEmpty()) {
            edits.push_back(std::move(change));
        }
    }
    return edits;
}

QByteArray ProfileText::with(std::span<const ProfileValue> values) const
{
    return areIndependent(values) ? withAll(bytes_, edits(values)) : withEach(bytes_, values);
}

// A new section, or a line end that the last line lacks, would come with each of the edits.
bool ProfileText::areIndependent(std::span<const ProfileValue> values) const
{
    return !bytes_.isEmpty() && isLineEnd(bytes_.back()) &&
           std::ranges::all_of(values, [this](const ProfileValue &value) {
               return find(value.section) != nullptr;
           });
}

// The last line of the text may have no line end; it gets one with the value.
ProfileEdit ProfileText::replaceValue(qsizetype lineEnd, qsizetype valueBegin,
                                      QByteArrayView value) const
{
    const qsizetype length = lineEnd - valueBegin;
    if (QByteArrayView(bytes_).sliced(valueBegin, length) == value) {
        return {};
    }
    const bool isOpen = lineEnd == bytes_.size();
    return {valueBegin, length, value.toByteArray() + (isOpen ? "\r\n" : "")};
}

ProfileEdit ProfileText::appendSection(QByteArrayView section, QByteArrayView line) const
{
    return insertLine(bytes_.size(), '[' + section.toByteArray() + "]\r\n" + line.toByteArray());
}

ProfileEdit ProfileText::insertLine(qsizetype offset, const QByteArray &line) const
{
    const bool midLine = offset > 0 && !isLineEnd(bytes_[offset - 1]);
    return {offset, 0, midLine ? "\r\n" + line : line};
}

std::optional<QByteArrayView> findProfileValue(QByteArrayView bytes, QByteArrayView section,
                                               QByteArrayView key)
{
    const QByteArrayView found = findSection(bytes, section);
    const qsizetype body = lineAt(found, 0).next;
    const auto line = findKey(found, body, found.size(), trimmedBlanks(key));
    return line ? std::optional(valueOf(found, *line)) : std::nullopt;
}

} // namespace velmora
