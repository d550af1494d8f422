#include "ui/KillBox.h"

#include "cameras/CameraChoices.h"

namespace velmora {

void askToKill(QWidget &window, ImageBrowser &browser, const KillQuestion &question,
               const SettingsSnapshot &settings)
{
    auto *const box = new QMessageBox(QMessageBox::Critical, QStringLiteral("Del "), question.text,
                                      QMessageBox::Yes | QMessageBox::No, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(
        QObject::tr("Camera %1: %2")
            .arg(cameraText(question.camera), nameOrAddress(settings, question.camera)));
    box->setDefaultButton(QMessageBox::No);
    QObject::connect(box, &QMessageBox::finished, &browser,
                     [&browser, target = question.target](int answer) {
                         if (answer == QMessageBox::Yes) {
                             browser.kill(target);
                         }
                     });
    box->open();
}

} // namespace velmora
