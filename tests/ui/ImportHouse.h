// The import's window over a whole capture, used like a person would: with mouse and keys, on
// controls found by name, with real image files.
#pragma once

#include "pictures/PictureLoader.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "support/StoredPictures.h"
#include "tools/Import.h"
#include "ui/PictureView.h"
#include "ui/frmImport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QProgressBar>
#include <QTest>

namespace velmora::test {

/// Drive C: is drives/c in the tree; camera 0:0 has an address and a folder, and the import opens
/// on C:\card.
class ImportHouse
{
public:
    ImportHouse();
    Q_DISABLE_COPY_MOVE(ImportHouse)
    ~ImportHouse();

    /// A control by its name; throws when there is none of that type.
    template <typename Control>
    Control &find(const char *name)
    {
        auto *const control = window.findChild<Control *>(QString::fromLatin1(name));
        if (control == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *control;
    }

    /// Shows the window with everything read and loaded.
    void open();

    void settle() { clock.advance(std::chrono::milliseconds{100}); }

    /// A picture of one colour in the source folder.
    void put(const QString &name, const QColor &colour = Qt::red) const;

    void click(const char *control);

    /// A row of a list.
    void clickRow(const char *list, int row);
    void doubleClickRow(const char *list, int row);

    void key(const char *control, int key);

    /// Picks an entry of a drop-down with keys, even the one that it already has.
    void pick(const char *box, int entry);

    [[nodiscard]] QString text(const char *label) { return find<QLabel>(label).text(); }

    /// Names of the file that a picture shows, and of all rows of a list.
    [[nodiscard]] QString shown(const char *picture);
    [[nodiscard]] QStringList rows(const char *list);

    [[nodiscard]] QMessageBox *message() { return window.findChild<QMessageBox *>(); }

    [[nodiscard]] QString stored(QStringView key) const;

    static constexpr CameraAddress kCamera{0, 0};

    FakeClock clock;
    ScriptedSource source{clock};
    CaptureHouse house{source, clock};
    Import import{{house.settings, house.storage, house.engine.conformity(), house.log,
                   house.problems, clock, house.scope}};
    PictureCache cache{qsizetype{48} * 1024 * 1024};
    PictureLoader loader{cache, clock, house.scope};
    frmImport window{import, loader};
};

} // namespace velmora::test
