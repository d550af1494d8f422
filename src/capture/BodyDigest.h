// Tells two bodies apart without keeping either.
#pragma once

#include <QByteArray>

#include <memory>

struct XXH3_state_s;

namespace velmora {

/// A digest of 128 bits. Fast rather than safe against forgery: a camera that makes two pictures of
/// its own look the same takes nothing away but its own picture.
class BodyDigest
{
public:
    BodyDigest();

    void add(QByteArrayView bytes);

    /// Of all that was added, hexadecimal.
    [[nodiscard]] QByteArray text() const;

private:
    struct Free
    {
        void operator()(XXH3_state_s *state) const;
    };

    std::unique_ptr<XXH3_state_s, Free> state_;
};

} // namespace velmora
