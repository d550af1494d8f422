#include "app/Memory.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace velmora {

void keepMemoryBetweenPasses()
{
#if defined(__GLIBC__)
    constexpr int kMegabyte = 1024 * 1024;
    mallopt(M_TRIM_THRESHOLD, 32 * kMegabyte);
    mallopt(M_MMAP_THRESHOLD, 4 * kMegabyte);
#endif
}

} // namespace velmora
