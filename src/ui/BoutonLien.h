// A link button: a clickable caption that opens the link its window has set.
//
//   BoutonLien
//     BL           "Site"
#pragma once

#include "ui/mOuvreLien.h"

#include <QWidget>

class QPushButton;

namespace velmora {

class BoutonLien : public QWidget
{
    Q_OBJECT

public:
    explicit BoutonLien(QWidget *parent = nullptr);

    /// What the link opens is asked for at each click. links: outlives the button.
    void follow(mOuvreLien &links);

    /// tip: what the link leads to, for people.
    void describe(const QString &tip);

private:
    QPushButton *BL;
};

} // namespace velmora
