// What a film's window must show, by the rules alone: it is told what happens to the film and to
// the browser's list, and knows nothing of the program's own film.
#pragma once

#include "browser/FileList.h"
#include "tools/Slideshow.h"

#include <algorithm>
#include <memory>

namespace velmora::test {

/// Positions count from 1. Every function is one thing that happens.
class FilmRule
{
public:
    /// The list outlives the object.
    explicit FilmRule(const FileList &list)
        : list_(list)
    {
    }

    /// The film has begun with the whole list; one that was not open is playing then.
    void begin()
    {
        isPaused = isOpen && isPaused;
        wasPaused = isPaused;
        isOpen = true;
        takeList();
        count = list_.count();
        range = {1, count};
        current_ = 0;
        at_ = 0;
        progress = 0;
        image = list_.file(0);
        Compte.clear();
        Compte0.clear();
        tDebut = day(1);
        tFin = day(count);
        if (count > 1) {
            showNumbers(0);
        }
        isRunning = isPaused ? isRunning : !isHeld;
    }

    void close()
    {
        isOpen = false;
        isRunning = false;
        image = {};
    }

    /// The browser lists something else, or again the same folder. False if a film that plays must
    /// have begun again for it.
    [[nodiscard]] bool follow()
    {
        if (!isOpen || list_.shared() == names_) {
            return true;
        }
        names_ = list_.shared();
        const bool isSame = list_.folder() == folder_;
        if (isSame && list_.count() > count) {
            grow();
        }
        return isPaused || isSame;
    }

    void tick()
    {
        if (!isPaused && range.start == range.end) {
            isRunning = false;
            return;
        }
        if (current_ > range.end) {
            current_ = range.start;
        }
        if (range.end == 0) {
            isRunning = false;
            return;
        }
        takeList();
        image = list_.file((current_ > 0 ? current_ : range.start) - 1);
        current_ = std::max(current_, range.start);
        progress = current_ - range.start + 1;
        at_ = current_;
        showNumbers(at_);
        ++current_;
    }

    /// The button, while the timer ran or stood.
    void press(bool ran)
    {
        isPaused = ran;
        wasPaused = wasPaused || isPaused;
        isRunning = !ran && !isHeld;
        isResumed = !isPaused;
    }

    void moveStart(int value)
    {
        range.start = value;
        if (range.start > range.end) {
            range.end = range.start < list_.count() - 9 ? range.start + 9 : range.start;
        }
        current_ = std::max(current_, range.start);
        at_ = current_;
        showRange();
    }

    void moveEnd(int value)
    {
        range.end = value;
        if (range.end < range.start) {
            range.start = range.end > 9 ? range.end - 9 : range.end;
        }
        if (current_ > range.end) {
            current_ = range.start;
        }
        isRunning = (isPaused || range.start != range.end) && !isHeld;
        at_ = current_;
        showRange();
    }

    /// The range was given elsewhere.
    void give(const PlayRange &given)
    {
        range = given;
        if (current_ < range.start || current_ > range.end) {
            current_ = range.start;
        }
        if (at_ < range.start || at_ > range.end) {
            at_ = current_;
        }
        if (!isPaused) {
            isRunning = range.start != range.end && !isHeld;
        }
        showRange();
    }

    /// The image at this place of the list, from 0, was chosen in a cell.
    void moveTo(int index)
    {
        current_ = index + 1;
        isRunning = isPaused ? isRunning : !isHeld;
    }

    /// The film was clicked while the browser runs it; returns the place in the list, from 0, that
    /// the browser must select.
    int click()
    {
        isRunning = !isPaused && !isHeld;
        current_ = current_ >= list_.count() ? 0 : current_;
        return current_ < 2 ? 0 : current_ - 2;
    }

    /// The storage folder was checked, or is being changed.
    void hold(bool isAway)
    {
        isHeld = isAway;
        isRunning = isOpen && !isHeld && (isRunning || !isPaused);
    }

    [[nodiscard]] int current() const { return current_; }

    /// Whose images are played.
    [[nodiscard]] const QString &folder() const { return folder_; }

    bool isOpen = false;
    bool isPaused = false;
    bool wasPaused = false; // since it began
    bool isRunning = false;
    bool isHeld = false;
    bool isResumed = false; // and its next image, which may be of another folder, is not shown yet
    PlayRange range;
    int count = 0;
    int progress = 0;
    ImageFile image;
    QString tDebut;
    QString tFin;
    QString Compte;
    QString Compte0;

private:
    void takeList()
    {
        folder_ = list_.folder();
        names_ = list_.shared();
        isResumed = false;
    }

    [[nodiscard]] QString day(int position) const { return list_.file(position - 1).name.left(8); }

    // What has come is within reach of the sliders. A paused film keeps its image and its place;
    // what was its end stays its end.
    void grow()
    {
        const bool isToItsEnd = range.end == count;
        count = list_.count();
        if (!isPaused) {
            return;
        }
        range.end = isToItsEnd ? count : range.end;
        if (const auto shown = list_.find(image); shown && at_ > 0) {
            current_ += *shown + 1 - at_;
            at_ = *shown + 1;
        }
        showRange();
    }

    void showRange()
    {
        showNumbers(at_);
        tDebut = range.start < 1 ? tDebut : day(range.start);
        tFin = range.end < 1 ? tFin : day(range.end);
    }

    void showNumbers(int position)
    {
        const auto ratio = [](int part, int whole) {
            return QStringLiteral("%1 / %2").arg(part).arg(whole);
        };
        Compte = ratio(position, range.end);
        Compte0 = ratio(position - range.start + 1, range.end - range.start + 1);
    }

    const FileList &list_;
    std::shared_ptr<const ImageNames> names_;
    QString folder_;
    int current_ = 0; // the next one
    int at_ = 0;      // in the counters
};

} // namespace velmora::test
