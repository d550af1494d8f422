// The image browser without its window, over a whole capture and a slideshow that the test chooses,
// with image files that a test creates by name and time.
#pragma once

#include "browser/ImageBrowser.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"

#include <functional>
#include <memory>

namespace velmora::test {

/// Any slideshow may be attached. Services and parts are open to the test.
class BrowserHouse : public QObject
{
public:
    using MakeFilm = std::function<std::unique_ptr<Projector>(BrowserHouse &)>;

    explicit BrowserHouse(const MakeFilm &makeFilm, FirstCheck storageCheck = FirstCheck::Done);
    Q_DISABLE_COPY_MOVE(BrowserHouse)

    /// Closes the browser and gives up what is still running.
    ~BrowserHouse() override;

    /// Gives a row an address of its own, makes its folder, and puts files with these names into
    /// it.
    void addCamera(CameraAddress camera, const QStringList &names = {}) const;

    /// The same with this many images, named by imageName() from 0 on.
    void addImages(CameraAddress camera, int count) const;

    /// Gives a row an address whose folder has so many images that reading it takes several turns
    /// of the event loop. The folder is shared: nothing in it may be changed.
    void addFullFolder(CameraAddress camera) const;

    /// Puts a file into a camera's folder.
    void put(CameraAddress camera, const QString &name) const;
    void put(CameraAddress camera, const QString &name, const QString &modified) const;

    void remove(CameraAddress camera, const QString &name) const;

    /// Removes the storage folder, as if its disk were pulled out, and puts it back.
    void pullStorage() const;
    void plugStorage() const;

    /// Runs the event loop until nothing is left to do.
    void finish() { capture.finish(); }

    /// Selects a camera in both lists and shows it, until done.
    void show(CameraAddress camera);

    /// Shows the group view of a group, until done.
    void showGroup(int group);

    /// Names of the files in the ten cells, and of the list of the group view.
    [[nodiscard]] QStringList cells() const;
    [[nodiscard]] QStringList rows() const;

    /// The cells that have a frame.
    [[nodiscard]] QList<int> framed() const;

    [[nodiscard]] QString NbI() const { return browser.face().NbI; }

    /// Makes the walk's timer tick.
    void fireScan();

    /// Values of the section "Control".
    [[nodiscard]] QString stored(QStringView key) const;
    void store(QStringView key, QStringView value) const;

    /// Lines of the log since the last call.
    QStringList newLog();

    FakeClock clock;
    ScriptedSource source{clock};
    CaptureHouse capture;
    Conformity &conformity;
    BrowserData data;
    std::unique_ptr<Projector> film;
    ImageBrowser browser;

private:
    [[nodiscard]] QString path(CameraAddress camera) const;

    qsizetype logRead_ = 0;
};

/// "20060307_000005" + "0714.jpg" for 5: names in the order of their numbers, one for each second
/// of a day.
[[nodiscard]] QString imageName(int number);

/// So many of these names, from a first number on.
[[nodiscard]] QStringList imageNames(int first, int count);

/// Number of images in a full folder.
inline constexpr int kFullFolder = 36000;

} // namespace velmora::test
