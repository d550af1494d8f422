// Judges a camera's answer. The image store keeps pictures by this judgement, and the test of a
// camera reports it.
#pragma once

#include "capture/KeepRule.h"
#include "capture/NewImageRule.h"

#include <QString>

namespace velmora {

/// An answer of fewer bytes is not taken for a picture.
inline constexpr qint64 kLeastPictureBytes = 1000;

/// A picture that has arrived, and what it is judged by.
struct Answer
{
    ImageDates dates;
    KeepChoice choice;
    PictureMark mark;   // as far as the choice needs it
    PictureMark stored; // of the last picture kept, as far as the choice needs it
    FolderState folder = FolderState::Empty;
};

enum class Worth {
    New,
    Unchanged,
    NotDated // only the first picture without a date is kept
};

/// True for a picture that is compared with the last one kept: the rule for undated pictures, where
/// chosen, replaces the usual one.
[[nodiscard]] bool isCompared(const Answer &answer);

/// Whether the picture is kept, by the rule that the user has chosen for the camera.
[[nodiscard]] Worth worthOf(const Answer &answer);

/// The same with what the picture finds in its camera's folder, which is read only where that
/// decides. folder: native path.
[[nodiscard]] Worth worthIn(const QString &folder, Answer answer);

/// The dates of a picture. header: Last-Modified as sent; stored: the text stored for the last
/// image kept. For a camera whose undated pictures are compared, a header that is not a date is
/// none; otherwise it has rules of its own.
[[nodiscard]] ImageDates imageDates(const QString &header, const QString &stored,
                                    const KeepChoice &choice);

/// What a picture finds in its camera's folder. folder: native path.
[[nodiscard]] FolderState folderState(const QString &folder);

} // namespace velmora
