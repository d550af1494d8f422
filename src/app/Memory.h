// How the program keeps memory between passes.
#pragma once

namespace velmora {

/// Keeps freed pictures with the process, up to the size of an ordinary pass: returning their pages
/// to the system after every pass and requesting them again costs more than writing the files.
void keepMemoryBetweenPasses();

} // namespace velmora
