// One running program per program folder.
#pragma once

#include <QLocalServer>
#include <QObject>

namespace velmora {

/// The first to claim a folder serves it; later ones ask it to come to the front and go. The claim
/// is a socket in the kernel's own name space, so it ends with the process however that ends.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// programFolder: native path without links in it.
    explicit SingleInstance(const QString &programFolder);

    /// True when this process is the first. Otherwise the first one has been asked to show itself.
    [[nodiscard]] bool claim();

Q_SIGNALS:
    /// Another start was made; the window is to come to the front.
    void shown();

private:
    void callFirst() const;

    QString name_;
    QLocalServer server_;
};

} // namespace velmora
