#include "capture/BodyDigest.h"

#include <new>
#include <xxhash.h>
#if defined(__x86_64__)
#include <xxh_x86dispatch.h> // takes the widest instructions that the processor has
#endif

namespace velmora {

void BodyDigest::Free::operator()(XXH3_state_s *state) const
{
    XXH3_freeState(state);
}

BodyDigest::BodyDigest()
    : state_(XXH3_createState())
{
    if (!state_) {
        throw std::bad_alloc();
    }
    XXH3_128bits_reset(state_.get());
}

void BodyDigest::add(QByteArrayView bytes)
{
    XXH3_128bits_update(state_.get(), bytes.data(), static_cast<std::size_t>(bytes.size()));
}

QByteArray BodyDigest::text() const
{
    XXH128_canonical_t result;
    XXH128_canonicalFromHash(&result, XXH3_128bits_digest(state_.get()));
    return QByteArrayView(result.digest, sizeof result.digest).toByteArray().toHex();
}

} // namespace velmora
