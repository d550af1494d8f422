// A file that another program writes and that appears under its name only when it is whole.
#pragma once

#include "base/WorkFile.h"

#include <QByteArray>
#include <QString>

#include <system_error>

namespace velmora {

/// Without finish() nothing of it remains.
class HiddenFile
{
public:
    /// folder: native path of the folder in which the file is to appear.
    explicit HiddenFile(const QString &folder);

    /// Why it could not be made.
    [[nodiscard]] std::error_code error() const { return file_.error(); }

    /// The descriptor that the writing program must inherit.
    [[nodiscard]] int descriptor() const { return file_.fd(); }

    /// The path by which that program opens the file; native.
    [[nodiscard]] QByteArray pathForHeir() const;

    [[nodiscard]] qint64 bytes() const;

    /// Gives the file its path in the folder, replacing any file there. Native bytes.
    [[nodiscard]] std::error_code finish(const QByteArray &target);

private:
    WorkFile file_;
};

} // namespace velmora
