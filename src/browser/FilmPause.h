// Pauses the slideshow while the browser's selection changes.
#pragma once

#include "browser/Projector.h"

namespace velmora {

/// Holds the film as long as it lives.
class FilmPause
{
public:
    /// wanted: false lets the film run on. The film outlives the pause.
    FilmPause(Projector &film, bool wanted)
        : film_(film)
        , isPaused_(wanted)
    {
        if (isPaused_) {
            film_.stopTimer();
        }
    }

    Q_DISABLE_COPY_MOVE(FilmPause)

    ~FilmPause()
    {
        if (isPaused_) {
            film_.startTimer();
        }
    }

private:
    Projector &film_;
    bool isPaused_;
};

} // namespace velmora
