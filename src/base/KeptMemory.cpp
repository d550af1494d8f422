#include "base/KeptMemory.h"

#include <malloc.h>

namespace velmora {

void keepFreedMemory()
{
    constexpr int kMegabyte = 1024 * 1024;
    mallopt(M_TRIM_THRESHOLD, 64 * kMegabyte);
    mallopt(M_MMAP_THRESHOLD, 32 * kMegabyte);
}

} // namespace velmora
