// A link button: a clickable caption that opens the link set by its window.
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

    /// The link is looked up at each click. links: outlives the button.
    void follow(mOuvreLien &links);

    /// tip: where the link leads, as a text for the user.
    void describe(const QString &tip);

private:
    QPushButton *BL;
};

} // namespace velmora
