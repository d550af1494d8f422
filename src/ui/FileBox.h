// The boxes that ask for a file or a folder.
#pragma once

#include <QString>

class QFileDialog;
class QWidget;

namespace velmora {

/// A box that asks for a file or a folder, beginning in the native folder, or where the last one
/// ended; not open yet. It belongs to the window, and goes away when it is closed. It opens no file
/// to tell its kind, deletes none, and moves none by a drag: a file that is long in answering, or a
/// large folder, would hold up the whole program, which may be capturing. A folder can be made.
[[nodiscard]] QFileDialog *newFileBox(QWidget &window, const QString &title,
                                      const QString &folder = {});

} // namespace velmora
