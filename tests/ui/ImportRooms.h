// The import's window beside the main window and the browser, over a whole capture, connected as
// the program does.
#pragma once

#include "BrowserWindowHouse.h"
#include "tools/ImportEngine.h"
#include "ui/Interface.h"
#include "ui/frmImport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QProgressBar>

namespace velmora::test {

class ImportRooms
{
public:
    ImportRooms()
    {
        QObject::connect(&main, &Interface::importWanted, &window, &frmImport::present);
        QObject::connect(&house.page, &CameraPage::addressStored, &imports.import(),
                         &Import::noticeAddress);
        main.bringUp();
        browser.present();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&browser));
        rooms.settle();
        rooms.browser.begin();
        rooms.settle();
    }

    Q_DISABLE_COPY_MOVE(ImportRooms)

    ~ImportRooms()
    {
        window.close();
        main.allowClose();
        main.close();
        house.scheduler.giveUp();
        house.scope.requestStop();
        house.clock.advance(std::chrono::seconds{1});
    }

    /// A control of the import's window.
    template <typename Control>
    Control &find(const char *name)
    {
        auto *const control = window.findChild<Control *>(QLatin1String(name));
        if (control == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *control;
    }

    template <typename Control>
    Control &inMain(const QString &name)
    {
        return *main.findChild<Control *>(name);
    }

    BrowserWindowHouse rooms;
    CaptureHouse &house = rooms.house;
    planche &browser = rooms.window;
    ImportEngine imports{house.engine, rooms.images};
    Interface main{{house.timer, house.table, house.storage, house.options,
                    house.engine.debugSwitch(), house.log, house.view, rooms.opener}};
    frmImport window{imports.import(), imports.loader()};
};

} // namespace velmora::test
