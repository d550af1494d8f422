// How the program keeps the memory of pictures.
#pragma once

namespace velmora {

/// Keeps freed pictures with the process, up to the size of an ordinary pass: returning their pages
/// to the system after every pass, or every image of a film, and requesting them again costs more
/// than writing the files.
void keepFreedMemory();

} // namespace velmora
