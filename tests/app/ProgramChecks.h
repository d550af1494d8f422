// What is to be seen in the program's windows and on the disk, and what must be, as lines of text.
#pragma once

#include "ProgramToolHands.h"

namespace velmora::test {

class ProgramChecks : public ProgramToolHands
{
protected:
    /// At rest.
    void check();

    /// After events in a hurry, of which the last ones count: what is on show is that of the camera
    /// and the group which the lists show.
    /// images: how many there were before, since what has come meanwhile need not be shown.
    void checkAfterHurry(std::size_t images);

    /// The group and the camera that the browser has stored.
    void takeStoredPlaces();

private:
    template <typename Look>
    QStringList remaining(Look look);
    void takeSelection();
    QStringList seen();
    QStringList meant();
    QStringList onShow();
    QStringList meantOnShow(const ModesRule &browser);

    QStringList seenBrowser();
    QStringList meantBrowser();
    QStringList seenTools();
    QStringList meantTools();
    QString dayText();
    QString filmTitle();
    QString meantFilmTitle();
    QStringList seenMain();
    QStringList meantMain();

    QStringList differences();
    QString known(const QString &text, CameraAddress camera);
    QString lampOf(int row);
    QString picture(const QString &name, const QString &path);
    QStringList rowsOf(QListView &of);
    QList<int> framed();
    QMap<QString, QString> file();
    void checkLate();
    void checkFile();
    void checkImages();
};

} // namespace velmora::test
