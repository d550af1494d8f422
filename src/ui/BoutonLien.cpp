// The link button: its caption, and the link that a click opens.
#include "ui/BoutonLien.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace velmora {

BoutonLien::BoutonLien(QWidget *parent)
    : QWidget(parent)
    , BL(new QPushButton(QStringLiteral("Site"), this))
{
    BL->setObjectName(QStringLiteral("BL"));
    BL->setAccessibleName(BL->text());
    BL->setFlat(true);
    BL->setCursor(Qt::PointingHandCursor);
    QFont underlined = BL->font();
    underlined.setUnderline(true);
    BL->setFont(underlined);
    QPalette colours = BL->palette();
    colours.setBrush(QPalette::ButtonText, colours.link());
    BL->setPalette(colours);
    auto *const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(BL);
    setFocusProxy(BL);
}

void BoutonLien::follow(mOuvreLien &links)
{
    connect(BL, &QPushButton::clicked, &links, [&links] { links.OuvreLien(links.link()); });
}

void BoutonLien::describe(const QString &tip)
{
    BL->setToolTip(tip);
    BL->setAccessibleName(tip);
}

} // namespace velmora
