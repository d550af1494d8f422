// The windows of the image browser and the slideshow over a whole capture, used like a person
// would: with mouse and keys, on controls found by name, with real image files.
#pragma once

#include "RecordingOpener.h"
#include "support/BusyClock.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "support/MailDouble.h"
#include "support/StoredPictures.h"
#include "tools/BrowserEngine.h"
#include "ui/CellFrame.h"
#include "ui/PictureView.h"
#include "ui/fCine.h"
#include "ui/planche.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTest>

namespace velmora::test {

class BrowserWindowHouse
{
public:
    BrowserWindowHouse();
    Q_DISABLE_COPY_MOVE(BrowserWindowHouse)
    ~BrowserWindowHouse();

    /// A control of either window by its name; throws when there is none of that type.
    template <typename Control>
    Control &find(const QString &name)
    {
        auto *control = window.findChild<Control *>(name);
        if (control == nullptr) {
            control = filmWindow.findChild<Control *>(name);
        }
        if (control == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return *control;
    }

    /// Gives a camera an address and this many one-coloured images, one for each second.
    void addImages(CameraAddress camera, int count);

    /// Shows the browser's window, with the folders read and the pictures loaded.
    void open();

    /// The same, on a camera with this many small images.
    void openOn(int images);

    /// Runs everything that waits for the event loop: folders, pictures, renames.
    void settle();

    /// The timer ticks.
    void fire(const QString &timer);

    /// From now on a playing film advances when the test says so, and not on its own.
    void holdFilm();

    PictureView &cell(int index);
    [[nodiscard]] int frame(int index);

    /// Cells whose frame is drawn.
    [[nodiscard]] QList<int> framed();

    /// Name of the file shown in a cell, or in any picture; empty for none.
    [[nodiscard]] QString shown(int cell);
    [[nodiscard]] QString shown(const QString &picture);

    /// Where a picture of the camera is.
    [[nodiscard]] QString imagePath(CameraAddress camera, const QString &name) const;

    [[nodiscard]] QString text(const QString &label) { return find<QLabel>(label).text(); }

    void click(const QString &control, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {});
    void press(const QString &control, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers = {});

    /// A click on a row of one of the four lists.
    void clickRow(const QString &list, int row);

    /// A key for one control, or for whatever has the focus.
    void key(const QString &control, int key, Qt::KeyboardModifiers modifiers = {});
    void keyInWindow(int key, Qt::KeyboardModifiers modifiers = {});

    /// Replaces a box's text, key by key.
    void retype(const QString &box, const QString &text);

    /// Ticks or unticks a check box with the mouse.
    void tick(const QString &box) { click(box); }

    /// The question being asked.
    [[nodiscard]] QMessageBox *question() { return window.findChild<QMessageBox *>(); }

    /// A value of the section "Control".
    [[nodiscard]] QString stored(QStringView key) const;

    int endless = 0; // tasks that go on as long as the house, and are not waited for

    FakeClock clock;
    BusyClock busy{clock, std::chrono::milliseconds{0}}; // work takes no time unless a test says so
    ScriptedSource source{clock};
    CaptureHouse house{source, clock, busy};
    MailDouble mail;
    BrowserEngine images{house.engine, mail};
    RecordingOpener opener;

    // Parts of the engines.
    Conformity &conformity = house.engine.conformity();
    const BrowserData &data = images.browser().shown();
    Slideshow &film = images.film();
    ImageBrowser &browser = images.browser();
    PictureCache &cache = images.pictures();
    PictureLoader &loader = images.loader();

    planche window{{browser, house.table, house.storage, house.log, house.view, loader}};
    fCine filmWindow{film, house.settings, house.storage};
};

} // namespace velmora::test
