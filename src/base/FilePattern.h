// File-name patterns by the rules of the program's home platform.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

/// "*" is any text, "?" exactly one character; letters of Windows-1252 match in either case. ".*"
/// at the end also matches a name without a dot: "*.*" is every file, "20*.*" every name that
/// begins with 20; "*.*.*" is every file too. A dot at the end of the pattern means that the name
/// has none: "*." is every name without a dot, "name." is "name" alone.
class FilePattern
{
public:
    explicit FilePattern(QByteArrayView pattern);

    /// name: UTF-8; "?" matches one character, not one byte, and a byte that is not UTF-8 counts as
    /// one.
    [[nodiscard]] bool matches(QByteArrayView name) const;

private:
    bool wantsNoDot_;
    QByteArray pattern_; // folded, without its final dot
};

} // namespace velmora
