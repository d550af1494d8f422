// How the program keeps memory between passes.
#pragma once

namespace velmora {

/// Lets freed pictures stay with the process, up to the size of a usual pass: giving their pages
/// back to the system after every pass and asking for them anew costs more than writing the files.
void keepMemoryBetweenPasses();

} // namespace velmora
