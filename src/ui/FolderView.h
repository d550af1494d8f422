// A list of folders with their symbols, each as far in as it is deep.
#pragma once

#include "ui/ListBoxes.h"

namespace velmora {

/// Shows a FolderList. Which folder is highlighted is the view's own affair: it is the one that the
/// user clicked or stepped to, until the list is another.
class FolderView : public FileView
{
    Q_OBJECT

public:
    explicit FolderView(QWidget *parent = nullptr);

    void reset() override;
};

} // namespace velmora
