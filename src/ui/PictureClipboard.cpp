#include "ui/PictureClipboard.h"

#include "pictures/PictureFile.h"
#include "pictures/PictureReader.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <utility>

namespace velmora {
namespace {

const QString kImageType = QStringLiteral("application/x-qt-image");

class PictureData final : public QMimeData
{
public:
    explicit PictureData(QByteArray bytes)
        : bytes_(std::move(bytes))
    {
    }

    [[nodiscard]] QStringList formats() const override { return {kImageType}; }

    [[nodiscard]] bool hasFormat(const QString &type) const override { return type == kImageType; }

protected:
    [[nodiscard]] QVariant retrieveData(const QString &type, QMetaType) const override
    {
        return type == kImageType ? QVariant(decodePicture(bytes_, {})) : QVariant();
    }

private:
    QByteArray bytes_;
};

} // namespace

void copyPicture(const QString &path)
{
    const QByteArray bytes = PictureFile(path).read();
    if (!bytes.isEmpty()) {
        QGuiApplication::clipboard()->setMimeData(new PictureData(bytes));
    }
}

} // namespace velmora
