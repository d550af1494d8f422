// A list of folders with their symbols, each as far in as it is deep.
#pragma once

#include "ui/ListBoxes.h"

namespace velmora {

/// Shows a FolderList.
class FolderView : public FileView
{
    Q_OBJECT

public:
    explicit FolderView(QWidget *parent = nullptr);
};

} // namespace velmora
