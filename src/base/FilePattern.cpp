#include "base/FilePattern.h"

#include "base/Characters.h"
#include "base/NameCase.h"

namespace velmora {
namespace {

// ".*", whose dot is wanted only where the name goes on.
bool isLooseDot(QByteArrayView pattern, qsizetype at)
{
    return pattern[at] == '.' && at + 1 < pattern.size() && pattern[at + 1] == '*';
}

bool matchesNothing(QByteArrayView pattern, bool mayMissDot)
{
    for (qsizetype p = 0; p < pattern.size(); ++p) {
        const bool isNothing = pattern[p] == '*' || (mayMissDot && isLooseDot(pattern, p));
        if (!isNothing) {
            return false;
        }
    }
    return true;
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
    // A "?" may have stood for the name's own dot, behind which no other one is missing.
    const bool mayMissDot = star >= 0 || !name.contains('.');
    return matchesNothing(pattern.sliced(p), mayMissDot);
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
