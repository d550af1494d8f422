// The texts on the contact sheet: what each cell shows, and why a cell shows nothing.
#pragma once

#include "browser/BrowserData.h"
#include "settings/SettingsFile.h"
#include "ui/ContactSheet.h"
#include "view/CameraRemarks.h"

#include <array>

namespace velmora {

class SheetCaptions
{
public:
    /// Everything passed in outlives the object.
    SheetCaptions(ContactSheet &widgets, const BrowserData &shown, const CameraRemarks &remarks);

    /// Loads the names of the cameras of the group on show.
    void takeNames(const SettingsSnapshot &settings);

    [[nodiscard]] const QString &name(int row) const
    {
        return names_.at(static_cast<std::size_t>(row));
    }

    /// Writes the texts into the cells.
    void show();

private:
    [[nodiscard]] QString captionOf(int cell) const;
    [[nodiscard]] QString remarkIn(int cell) const;

    ContactSheet &widgets_;
    const BrowserData &shown_;
    const CameraRemarks &remarks_;
    std::array<QString, kRows> names_; // of the group's cameras
};

} // namespace velmora
