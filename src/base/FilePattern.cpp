#include "base/FilePattern.h"

#include "base/Characters.h"
#include "base/NameCase.h"

namespace velmora {
namespace {

// Whether the rest of a pattern matches nothing at the end of a name: stars, and dots in front of
// stars. A name that has a dot has used one up, so only after a star may a further dot match
// nothing.
bool matchesNothing(QByteArrayView pattern, qsizetype from, bool hasDot)
{
    for (qsizetype p = from; p < pattern.size(); ++p) {
        const bool isLooseDot = pattern[p] == '.' && p + 1 < pattern.size() &&
                                pattern[p + 1] == '*' &&
                                (!hasDot || (p > 0 && pattern[p - 1] == '*'));
        if (pattern[p] != '*' && !isLooseDot) {
            return false;
        }
    }
    return true;
}

// One pass that backtracks to the last "*" only: what follows it is tried from each position on.
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
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++retry;
        } else {
            return false;
        }
    }
    return matchesNothing(pattern, p, name.contains('.'));
}

} // namespace

FilePattern::FilePattern(QByteArrayView pattern)
    : wantsNoDot_(pattern.endsWith('.'))
    , pattern_(foldedName(wantsNoDot_ ? pattern.chopped(1) : pattern))
{
}

bool FilePattern::matches(QByteArrayView name) const
{
    return !(wantsNoDot_ && name.contains('.')) && matchesExactly(pattern_, foldedName(name));
}

} // namespace velmora
