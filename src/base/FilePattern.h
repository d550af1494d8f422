// File-name patterns by the rules of the program's home platform.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

/// "*" is any text, "?" exactly one character; letters match in either case. ".*" at the end also
/// matches a name without a dot: "*.*" is every file, "20*.*" every name that begins with 20.
class FilePattern
{
public:
    explicit FilePattern(QByteArray pattern);

    /// name: UTF-8, of which "?" matches one character, not one byte; a byte that is no UTF-8
    /// counts as one.
    [[nodiscard]] bool matches(QByteArrayView name) const;

private:
    QByteArray pattern_;
    QByteArray withoutDot_; // the pattern that a name without a dot may match too; null if none
};

} // namespace velmora
