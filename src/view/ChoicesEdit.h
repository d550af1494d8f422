// What is chosen for a camera while its sheet is open: what was stored when the sheet was filled,
// and what of the user's changes may be stored now.
#pragma once

#include "cameras/CameraChoices.h"

namespace velmora {

/// The fields of a sheet; the address without blanks around it.
struct CameraFields
{
    QString name;
    QString address;
    CameraLogin login;
    KeepChoice keep;

    bool operator==(const CameraFields &) const = default;
};

class ChoicesEdit
{
public:
    /// settings: outlives the object.
    explicit ChoicesEdit(const SettingsFile &settings);

    /// What is stored for a camera, which the sheet belongs to from now on.
    [[nodiscard]] CameraFields begin(CameraAddress camera);

    /// What the sheet's boxes have made of it. Only what differs from this is stored.
    void setFilled(const CameraFields &fields) { filled_ = fields; }

    [[nodiscard]] CameraAddress camera() const { return camera_; }

    /// "3:7 Garage".
    [[nodiscard]] QString title() const;

    /// True when the user has changed something.
    [[nodiscard]] bool isChanged(const CameraFields &now) const { return now != filled_; }

    [[nodiscard]] bool changesAddress(const CameraFields &now) const
    {
        return now.address != filled_.address;
    }

    /// Why this cannot be stored, in words: a value that the settings cannot hold, or a camera that
    /// was put into the row since the sheet was filled, for which the login above all is not meant.
    /// Nothing when it can.
    [[nodiscard]] std::optional<QString> refusal(const CameraFields &now) const;

    /// The row has been given the address in the sheet.
    void followAddress();

    /// Stores all but the address, which the row stores. Nothing is chosen for a row that was
    /// emptied.
    [[nodiscard]] SettingsChange store(const CameraFields &now) const;

private:
    [[nodiscard]] bool isOfSameCamera() const;

    const SettingsFile &settings_;
    CameraAddress camera_;
    CameraFields filled_;
    QString stored_; // the camera's address when the sheet was filled
};

} // namespace velmora
