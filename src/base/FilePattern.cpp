#include "base/FilePattern.h"

#include "base/Characters.h"

#include <utility>

namespace velmora {
namespace {

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// One pass with a single step back: what follows the last "*" is tried from each place on.
bool matchesExactly(QByteArrayView pattern, QByteArrayView name)
{
    qsizetype p = 0;
    qsizetype n = 0;
    qsizetype star = -1;
    qsizetype retry = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            retry = n;
        } else if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            n += characterLength(name, n);
        } else if (p < pattern.size() && lower(pattern[p]) == lower(name[n])) {
            ++p;
            ++n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++retry;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') {
        ++p;
    }
    return p == pattern.size();
}

} // namespace

FilePattern::FilePattern(QByteArray pattern)
    : pattern_(std::move(pattern))
{
    if (pattern_.endsWith(".*")) {
        withoutDot_ = pattern_.chopped(2);
    }
}

bool FilePattern::matches(QByteArrayView name) const
{
    return matchesExactly(pattern_, name) ||
           (!withoutDot_.isNull() && !name.contains('.') && matchesExactly(withoutDot_, name));
}

} // namespace velmora
