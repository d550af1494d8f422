// The motion alarm: walks back through the images of the browser's camera and compares each with
// the one stored just before it. What to look for in a pair is left open.
#pragma once

#include "base/Clock.h"
#include "base/TaskScope.h"
#include "browser/BrowserData.h"
#include "cameras/StorageFolder.h"

#include <QImage>
#include <QObject>

#include <array>

namespace velmora {

/// The pictures of the alarm's window.
enum class AlarmPicture {
    Ref, // iRef: the older image of a pair, the reference
    Var, // iVar: the newer one, which may have changed
    Vide // iVide: always empty
};

struct LoadedPicture
{
    QString path; // native; empty for no picture
    QImage image;
};

enum class Comparison { Success, Failure };

/// Brings each component of a colour into 0 to 255. Not called yet: a comparison uses it once it
/// has adjusted the components.
void clampColour(int &red, int &green, int &blue);

/// Works in the scope, which must be joined before the object is destroyed.
class MotionAlarm : public QObject
{
    Q_OBJECT

public:
    /// Everything passed in outlives the object.
    MotionAlarm(const StorageFolder &storage, const BrowserData &data, Clock &clock,
                TaskScope &scope);

    [[nodiscard]] const LoadedPicture &picture(AlarmPicture which) const;

    /// Size at which iRef and iVar are shown, in screen pixels; their pictures are loaded again for
    /// it.
    void setPixels(QSize pixels);

    /// Loads the reference image ("charge la référence"): the browser's selected one.
    void ChargeRef();

    /// Starts `Scan`; does nothing while one is running.
    void run();

    /// Ends a scan at its next step.
    void stop() { stopped_ = true; }

    /// Compares the pair on show ("vérifie la couleur"). There is nothing yet that it looks for.
    virtual Comparison VerifColor();

Q_SIGNALS:
    void changed(velmora::AlarmPicture which);

    /// Both pictures of a pair are loaded, and must be on screen before they are compared.
    void repaintWanted();

private:
    /// Walks back through the images, pair by pair.
    QCoro::Task<> Scan();

    QCoro::Task<> pass(int i);
    [[nodiscard]] bool isOver() const;
    [[nodiscard]] QString path(int position) const;
    void clear(AlarmPicture which);
    void load(AlarmPicture which, const QString &path);
    LoadedPicture &at(AlarmPicture which);

    const StorageFolder &storage_;
    const BrowserData &data_;
    Clock &clock_;
    TaskScope &scope_;
    std::array<LoadedPicture, 3> pictures_;
    QSize pixels_;
    bool scanning_ = false;
    bool stopped_ = false;
};

} // namespace velmora
