// Which ten images of a list are on the contact sheet, and in which cell the selected one is.
#pragma once

namespace velmora {

/// Positions from 0.
struct Slice
{
    int start = 0; // position of the image in cell 0
    int frame = 0; // cell of the selected image
};

/// The slice around a selected position of a list with at least one image. The selected image is in
/// cell 4 wherever the list allows it; the first ten and the last ten do not scroll.
[[nodiscard]] Slice sliceAround(int index, int count);

} // namespace velmora
