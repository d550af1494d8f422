// What the rules of the camera rows make of everything that happens to them: what the settings file
// holds, and what the window shows of it. Kept as simple as the rules, and without any widget.
#pragma once

#include "cameras/CameraAddress.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace velmora::test {

inline const QStringList kRowWords{QStringLiteral("AutoDelai"), QStringLiteral("EffM"),
                                   QStringLiteral("BestTime"),  QStringLiteral("SB"),
                                   QStringLiteral("TimeLoad"),  QStringLiteral("lNew"),
                                   QStringLiteral("LocalTime"), QStringLiteral("LastModified")};
inline const QStringList kChoiceWords{QStringLiteral("Name"), QStringLiteral("User"),
                                      QStringLiteral("Password")};

/// One camera in the settings file; what is not stored is empty.
struct StoredCamera
{
    QString url;
    QMap<QString, QString> row;     // by kRowWords
    QMap<QString, QString> choices; // by kChoiceWords

    [[nodiscard]] bool wasLoaded() const;

    [[nodiscard]] bool isOn(const QString &word) const { return row[word].toInt() != 0; }

    void forgetLogin();

    /// An address takes the place of another, as typed or saved.
    void replaceUrl(const QString &now);

    /// A command puts a camera into the row, which has none.
    void add(const QString &now, const QString &name);

    /// The capture stores a good answer: `date` is that of the image.
    void answer(const QString &date);
};

/// One row of the window.
struct ShownRow
{
    QString box;
    QString known; // the address of the camera that it shows
    bool automatic = false;
    bool deletes = false;
    QString bestTime;
    int newImages = 0;
    int loadSeconds = 0;
    int lamp = 0; // while the camera is not being fetched
};

class RowReference
{
public:
    [[nodiscard]] StoredCamera &at(CameraAddress camera) { return cameras_[camera]; }

    [[nodiscard]] StoredCamera &inRow(int row) { return at({group, row}); }

    [[nodiscard]] ShownRow &shown(int row) { return rows_.at(static_cast<std::size_t>(row)); }

    /// The tab of a group is selected in the visible window.
    void load(int selected);

    /// The rows are read again.
    void reread();
    void reread(int row);

    /// The box of a row is entered, typed into, and left. What was typed over another program's
    /// change counts, and nothing else that was chosen for that one's camera.
    void enter(int row);
    void type(int row, const QString &text);
    void leave();

    /// An address is saved elsewhere.
    void fill(CameraAddress camera, const QString &url);

    /// A box of the row acts for the camera that it showed, or for none.
    [[nodiscard]] bool actsFor(CameraAddress camera, const QString &known);

    void choose(int row, const QString &word, bool on);
    void resetBestTime(int row);
    void resetNewImages();

    /// The capture has stored a good answer with an image of that date, a failure, a new image; any
    /// download took so long.
    void answer(CameraAddress camera, const QString &date);
    void fail(CameraAddress camera);
    void countImage(CameraAddress camera);
    void showLoadSeconds(CameraAddress camera, int seconds);

    /// The colour stored for a row of the group on screen; red without a camera.
    [[nodiscard]] int storedLamp(int row);

    /// All that is stored of cameras and groups: "Section key" and its value, unless that is empty.
    [[nodiscard]] QMap<QString, QString> file();

    /// The row that the next camera gets; none if its address is there already.
    [[nodiscard]] std::optional<CameraAddress> placeFor(const QString &url);

    std::array<QString, kGroups> active; // as stored
    int group = 0;                       // on screen
    bool groupOn = false;                // as shown
    int hand = -1;                       // the row whose box is being edited

private:
    [[nodiscard]] bool keepsItsText(int row) const;
    void showUrl(int row);
    void storeTyped(int row, const std::optional<QString> &before);
    void show(int row);

    PerCamera<StoredCamera> cameras_;
    std::array<ShownRow, kRows> rows_;
    bool isTyped_ = false; // into the box that is being edited
    std::array<bool, kRows> refused_{};
    std::array<std::optional<QString>, kRows> typedOver_; // known when something else was typed
};

} // namespace velmora::test
