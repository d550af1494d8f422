// What the rules of a camera's sheet make of everything that happens to it: what its boxes show,
// what it says, and what it stores. Kept as simple as the rules, and without any widget.
#pragma once

#include "cameras/CameraAddress.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace velmora::test {

inline constexpr int kClearlyRow = 2;   // of the box that says which pictures are kept
inline constexpr int kUsualPercent = 5; // until another is chosen

/// All that a sheet shows and stores of a camera.
struct SheetContent
{
    QString name;
    QString url;
    QString user;
    QString password;
    int keep = 0; // row of its box
    int percent = kUsualPercent;

    bool operator==(const SheetContent &) const = default;

    [[nodiscard]] QStringList texts() const { return {name, url, user, password}; }

    [[nodiscard]] QString &text(int field)
    {
        QString *const all[] = {&name, &url, &user, &password};
        return *all[field];
    }

    /// As it counts: the percentage only where it is chosen, no blanks around the address.
    [[nodiscard]] SheetContent asMeant() const
    {
        SheetContent meant = *this;
        meant.url = url.trimmed();
        meant.percent = keep == kClearlyRow ? percent : kUsualPercent;
        return meant;
    }

    /// As stored of the row that holds the choice.
    [[nodiscard]] QString keepText() const
    {
        return QStringList{QString(), QStringLiteral("differing"),
                           QStringLiteral("clearly:%1").arg(percent)}
            .at(keep);
    }
};

class SheetReference
{
public:
    [[nodiscard]] SheetContent &stored(CameraAddress camera) { return stored_[camera]; }

    [[nodiscard]] bool isOpen() const { return isOpen_; }

    [[nodiscard]] CameraAddress camera() const { return camera_; }

    [[nodiscard]] const SheetContent &shown() const { return shown_; }

    [[nodiscard]] const QString &title() const { return title_; }

    [[nodiscard]] const QString &message() const { return message_; }

    /// True when it begins anew: with what is stored, and nothing tested.
    bool present(CameraAddress camera)
    {
        const bool isChanged = isOpen_ && shown_.asMeant() != filled_.asMeant();
        if (!isChanged) {
            begin(camera);
        } else if (camera != camera_) {
            message_ = QStringLiteral("Save or cancel this first; then open camera %1:%2 again")
                           .arg(camera.group)
                           .arg(camera.row);
        }
        isOpen_ = true;
        return !isChanged;
    }

    void type(int field, const QString &text)
    {
        shown_.text(field) = text;
        message_.clear();
    }

    void chooseKeep(int row) { shown_.keep = row; }

    void choosePercent(int percent) { shown_.percent = percent; }

    void close() { isOpen_ = false; }

    void save()
    {
        if (const QString why = refusal(); !why.isEmpty()) {
            message_ = why;
            return;
        }
        store(shown_.asMeant(), filled_.asMeant());
        close();
    }

private:
    static QString numbered(CameraAddress camera)
    {
        return QStringLiteral("%1:%2").arg(camera.group).arg(camera.row);
    }

    void begin(CameraAddress camera)
    {
        const SheetContent &found = stored_[camera];
        camera_ = camera;
        known_ = found.url;
        shown_ = found.asMeant();
        if (found.user.isEmpty()) {
            shown_.password.clear(); // which does not count
        }
        filled_ = shown_;
        title_ = (QStringLiteral("Camera ") + numbered(camera) + u' ' + found.name).trimmed();
        message_.clear();
    }

    [[nodiscard]] QString refusal()
    {
        const SheetContent now = shown_.asMeant();
        const auto isForeign = [](const QString &text) {
            return QString::fromLatin1(text.toLatin1()) != text;
        };
        if (now.url.size() > 255) {
            return QStringLiteral(
                       "Overflow: this camera address has %1 characters, at most 255 can "
                       "be stored; row %2 keeps the address that it had")
                .arg(now.url.size())
                .arg(camera_.row);
        }
        if (isForeign(now.name)) {
            return QStringLiteral(
                "A camera's name is one line of the Western European character set");
        }
        if (isForeign(now.user) || isForeign(now.password)) {
            return QStringLiteral(
                "User and password are one line each of at most 254 characters of "
                "the Western European character set");
        }
        return stored_[camera_].url == known_
                   ? QString()
                   : QStringLiteral("The row has got another address meanwhile: nothing was "
                                    "stored. Cancel, and open the sheet again");
    }

    static QString server(const QString &url) { return url.section(u'/', 0, 2); }

    // What is chosen for a camera goes with it. The login goes to the address beside it.
    void store(const SheetContent &now, const SheetContent &before)
    {
        SheetContent &camera = stored_[camera_];
        const bool isMoved = now.url != before.url;
        if (isMoved && now.url.isEmpty()) {
            camera = {};
            return;
        }
        camera.url = QString::fromLatin1(now.url.toLatin1()); // what the file can hold of it
        if (now.name != before.name) {
            camera.name = now.name.trimmed();
        }
        if (now.keep != before.keep || now.percent != before.percent) {
            camera.keep = now.keep;
            camera.percent = now.percent;
        }
        if (isMoved || now.user != before.user || now.password != before.password) {
            camera.user = now.user;
            camera.password = now.password;
        }
    }

    PerCamera<SheetContent> stored_;
    bool isOpen_ = false;
    CameraAddress camera_;
    QString known_; // the address stored when the sheet was filled
    SheetContent filled_;
    SheetContent shown_;
    QString title_;
    QString message_;
};

} // namespace velmora::test
