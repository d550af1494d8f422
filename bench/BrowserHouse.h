// The browser's window over a camera with very many images, for the measurements of browsing.
#pragma once

#include "BenchHouse.h"
#include "mail/SmtpClient.h"
#include "tools/BrowserEngine.h"
#include "ui/planche.h"

#include <functional>

namespace velmora::bench {

/// The longest turn of the event loop: by the clock, and the program's own share of it.
struct LongestTurn
{
    double gapMs = 0;
    double processorMs = 0;
};

/// The camera is the first of the first group, and the only one.
class BrowserHouse
{
public:
    /// names, pictures, megapixels: of the images in its folder, as fillCamera() makes them.
    BrowserHouse(int names, int pictures, double megapixels);
    Q_DISABLE_COPY_MOVE(BrowserHouse)
    ~BrowserHouse();

    House &capture() { return house_; }

    BrowserEngine &images() { return images_; }

    /// Shows the window, and waits until the list and the sheet are complete.
    LongestTurn open();

    /// Selects the image before the selected one by its key, and waits for the pictures.
    LongestTurn step();

    /// Lists the chosen camera, or the group, again, and waits for the pictures.
    LongestTurn refresh();

    /// Waits until nothing is left to do: the list lays its rows out in batches, between events.
    /// Returns the processor time that this took; milliseconds.
    double settle();

    /// Puts one more image into the folder, the newest.
    void addImage();

private:
    LongestTurn turnsUntil(const std::function<bool()> &done);
    [[nodiscard]] bool isComplete();

    Folder folder_;
    House house_;
    QString cameraFolder_;
    int names_ = 0;
    SmtpClient mail_;
    BrowserEngine images_;
    planche window_;
};

} // namespace velmora::bench
