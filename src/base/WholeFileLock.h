// A write lock on the whole of an open file. It belongs to the open file and not to the process:
// it ends when the file is closed, and closing another opening of the same file does not release
// it.
#pragma once

namespace velmora {

/// Takes the lock without waiting. False when it is not to be had; errno says why.
[[nodiscard]] bool lockWholeFile(int file);

/// Whether another opening of the file holds any lock on it.
[[nodiscard]] bool isLockedByAnother(int file);

} // namespace velmora
