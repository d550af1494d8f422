// Keeps the places of the standard files for them alone.
#pragma once

namespace velmora {

/// For a process that was started without standard input, output or error: keeps that place taken
/// by a file that cannot be used, so that no file opened later gets it, and with it the lines that
/// are printed. Reading or writing there fails as it would without. To be called first of all.
void holdStandardFiles();

} // namespace velmora
