// The addresses typed into the boxes of a group's ten rows: which of them are stored, and what else
// changes with a camera's address. Groups and rows are 0-based.
#pragma once

#include "cameras/CameraTable.h"
#include "cameras/StorageFolder.h"

#include <QObject>
#include <QStringList>

#include <array>
#include <optional>

namespace velmora {

/// Owns what is being typed, not what the boxes show. What is wrong with a text is reported once,
/// not each time its box is left. Blanks around a text do not count.
class AddressEditing : public QObject
{
    Q_OBJECT

public:
    AddressEditing(const CameraTable &table, const StorageFolder &storage, Problems &problems);

    /// The boxes show the stored addresses of this group, and nothing is being typed.
    void begin(int group);

    /// A row's box shows the stored address again.
    void begin(CameraAddress camera);

    /// A row's box was changed to this text, and not left yet. shown: the address of the camera
    /// that the row shows, on which what is typed is based.
    void type(int row, const QString &text, const QString &shown);

    /// A row's box was left with this text: makes the folder of the address still stored, then
    /// stores this one. The address that the box is to show; nothing for a text that cannot be
    /// stored, which stays in the box. A row that another program has changed meanwhile keeps that
    /// change unless something was typed.
    [[nodiscard]] std::optional<QString> leave(int row, const QString &text);

    /// Stores an address that was typed elsewhere, under the same rules.
    void store(CameraAddress camera, const QString &text);

Q_SIGNALS:
    /// An address was stored in place of another.
    void addressChanged(velmora::CameraAddress camera, const QString &address);

private:
    /// What is known of a box since its text was last the stored address.
    struct Box
    {
        std::optional<QString> typedOver; // the address on which what is typed is based
        QString left;                     // the text with which it was last left
        QStringList told;                 // what was reported about that text
    };

    [[nodiscard]] Box &box(int row) { return boxes_.at(static_cast<std::size_t>(row)); }

    void tellOnce(CameraAddress camera, const QString &message);
    [[nodiscard]] bool acceptAddress(CameraAddress camera, const QString &address);
    void makeFolderBefore(CameraAddress camera, const QString &address);
    void storeAddress(CameraAddress camera, const QString &address);
    SettingsChange leaveBehind(CameraAddress camera, const QString &address);
    void giveRow(CameraAddress camera, const QString &address);

    const CameraTable &table_;
    const StorageFolder &storage_;
    Problems &problems_;
    int group_ = 0;
    std::array<Box, kRows> boxes_;
};

} // namespace velmora
