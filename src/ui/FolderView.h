// A list of folders with icons, indented by depth.
#pragma once

#include "ui/ListBoxes.h"

namespace velmora {

/// Shows a FolderList. The highlight belongs to the view: it is on the folder that the user clicked
/// or moved to, until the list changes.
class FolderView : public FileView
{
    Q_OBJECT

public:
    explicit FolderView(QWidget *parent = nullptr);

    void reset() override;
};

} // namespace velmora
