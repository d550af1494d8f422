#include "app/Memory.h"

#include <malloc.h>

namespace velmora {

void keepMemoryBetweenPasses()
{
    constexpr int kMegabyte = 1024 * 1024;
    mallopt(M_TRIM_THRESHOLD, 64 * kMegabyte);
    mallopt(M_MMAP_THRESHOLD, 4 * kMegabyte);
}

} // namespace velmora
