// Pauses the slideshow while the browser's selection changes.
#pragma once

#include "browser/Projector.h"

namespace velmora {

/// Holds the film as long as it lives; one that is paused meanwhile stays so.
class FilmPause
{
public:
    /// wanted: false lets the film run on. The film outlives the pause.
    FilmPause(Projector &film, bool wanted)
        : film_(film)
        , isPaused_(wanted)
        , wasPlaying_(film.isPlaying())
    {
        if (isPaused_) {
            film_.stopTimer();
        }
    }

    Q_DISABLE_COPY_MOVE(FilmPause)

    ~FilmPause()
    {
        if (isPaused_ && (film_.isPlaying() || !wasPlaying_)) {
            film_.startTimer();
        }
    }

private:
    Projector &film_;
    bool isPaused_;
    bool wasPlaying_;
};

} // namespace velmora
