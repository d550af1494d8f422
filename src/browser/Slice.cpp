#include "browser/Slice.h"

#include "browser/BrowserState.h"

namespace velmora {
namespace {

constexpr int kBefore = 6;  // the start is looked for further back than the selection will be,
constexpr int kBehind = 13; // so that near the end the last ten come into view early
constexpr int kCentre = 4;

int sliceStart(int index, int count)
{
    if (count <= kCells) {
        return 0;
    }
    const int earliest = index - kBefore;
    if (earliest + kBehind > count) {
        return count - kCells;
    }
    return earliest < -1 ? 0 : index - kCentre;
}

} // namespace

Slice sliceAround(int index, int count)
{
    const int start = sliceStart(index, count);
    const bool centred = start > 0 && count - index > kCentre + 1;
    return {start, centred ? kCentre : index - start};
}

} // namespace velmora
