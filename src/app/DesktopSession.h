// The desktop's session, in which the program runs with its windows: what is started again when the
// session is restored, and its end.
#pragma once

#include <QObject>
#include <QString>

namespace velmora {

/// Made once there is an application, and ends before it.
class DesktopSession : public QObject
{
    Q_OBJECT

public:
    /// folder: the program folder in use. A restored session starts the program in it again: there
    /// may be several, each with cameras of its own.
    explicit DesktopSession(const QString &folder);
    Q_DISABLE_COPY_MOVE(DesktopSession)
    ~DesktopSession() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user has logged out. The toolkit would close the windows one after another, of which
    /// some only hide, and the program would be left without a display.
    void ended();
};

} // namespace velmora
