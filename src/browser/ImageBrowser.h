// The image browser without its window: takes what the user does, in order, to the parts that know
// what follows from it.
#pragma once

#include "base/Turnstile.h"
#include "browser/BrowserModes.h"
#include "browser/FileActions.h"
#include "browser/GridActions.h"

#include <functional>

namespace velmora {

/// Actions that read folders run one after the other. One that builds the display anew takes the
/// place of any other such action that has not ended, since that one would only be painted over; a
/// display that nobody has finished at the end of an action is finished then.
class ImageBrowser : public QObject
{
    Q_OBJECT

public:
    ImageBrowser(const BrowserServices &services, BrowserData &data, Projector &film);

    [[nodiscard]] BrowserLists &lists() { return lists_; }

    [[nodiscard]] BrowserModes &modes() { return modes_; }

    [[nodiscard]] GridActions &grid() { return grid_; }

    [[nodiscard]] FileActions &files() { return files_; }

    /// The window is about to be shown.
    void load();

    /// Camera folders may be read from now on.
    void begin();

    /// Old images of this camera are gone from its folder: lists what is left if they are shown. A
    /// slideshow keeps its list.
    void showDeletion(CameraAddress camera);

    /// The window closed.
    void unload();

    /// The program ends: nothing is read any more.
    void close();

    /// The group and camera that the user chose last; shown as chosen while they are still waiting
    /// for their turn.
    [[nodiscard]] CameraAddress choice() const;

    void chooseGroup(int group);
    void chooseCamera(int row);

    /// Images were put into camera folders: as if the chosen camera had been chosen once more.
    void chooseCameraAgain() { chooseCamera(choice().row); }

    void chooseFile(int index);
    void chooseCameraRow(int row);
    void clickCell(int cell);
    void doubleClickCell(int cell);
    void zoomCell(int cell);
    void setMode(Mode mode, bool on);
    void refresh();
    void toggleFilm();
    void kill(const ImageFile &target);

    /// The capture has stored a new image of a camera. Shown at once where the user follows new
    /// images, and where there was none of that camera to be seen.
    void follow(CameraAddress camera);

    /// The seconds to the next capture were clicked: fixed cameras come five ticks later.
    void ctrT_Click();

private:
    enum class Kind {
        Rebuild, // builds the whole display, instead of any that came before
        Walk,    // builds it too, unless another building is wanted by then
        Follow   // goes on from the display as it is
    };
    using Story = std::function<QCoro::Task<>()>;

    void launch(Kind kind, Story story);
    QCoro::Task<> inTurn(Kind kind, int rebuild, Story story);
    QCoro::Task<> run(Kind kind, int rebuild, Story story);
    QCoro::Task<> walk();
    QCoro::Task<> showGroup(int group);
    QCoro::Task<> showCamera(int row);
    QCoro::Task<> showCameraRow(View view, CameraAddress camera);
    void selectAtOnce(int row);
    void followStorage();
    [[nodiscard]] QString usableStorage() const;

    BrowserServices services_;
    BrowserLists lists_;
    BrowserModes modes_;
    GridActions grid_;
    FileActions files_;
    Turnstile turnstile_;
    QString shownStorage_;
    std::optional<int> nextGroup_; // chosen, not yet taken
    std::optional<int> nextRow_;
    int rebuilds_ = 0;
    bool acting_ = false;
    bool rebuilding_ = false;
    bool walking_ = false;
    bool closed_ = false;
};

} // namespace velmora
