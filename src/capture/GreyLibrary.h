// The library that decodes what is not an ordinary JPEG with the toolkit's readers of pictures,
// which come with its libraries of windows: few cameras need them, and only when they are compared.
#pragma once

#include <cstddef>

namespace velmora {

/// Receives a picture: width and height in pixels, and a byte of grey for each, line by line, the
/// lines `step` bytes apart. They are gone when it returns.
using TakeGreys = void (*)(void *user, int width, int height, std::size_t step,
                           const unsigned char *greys);

/// What the library offers: decodes a picture in one go and passes it on. Anything else, and a
/// picture of more than 2 Mi pixels, is left.
using DecodeGreys = void (*)(const char *bytes, std::size_t count, TakeGreys take, void *user);

inline constexpr const char *kGreyLibrary = "libvelmora-greys.so";
inline constexpr const char *kDecodeGreys = "velmoraDecodeGreys";

} // namespace velmora
