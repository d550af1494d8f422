// A file that another program writes and that appears under its name only when it is whole.
#pragma once

#include "base/FileWriter.h"
#include "base/WorkFile.h"

#include <QByteArray>
#include <QString>

#include <system_error>

namespace velmora {

/// Without finish() nothing of it remains.
class HiddenFile
{
public:
    /// target: native path under which it is to appear; a link is followed.
    explicit HiddenFile(const QString &target);

    /// Why it could not be made. What is at the target and not an ordinary file, or a link that
    /// leads nowhere, stays.
    [[nodiscard]] std::error_code error() const
    {
        return place_.refusal ? place_.refusal : file_.error();
    }

    /// The descriptor that the writing program must inherit.
    [[nodiscard]] int descriptor() const { return file_.fd(); }

    /// The path by which that program opens the file; native.
    [[nodiscard]] QByteArray pathForHeir() const;

    [[nodiscard]] qint64 bytes() const;

    /// Gives the file its path, replacing any file there.
    [[nodiscard]] std::error_code finish();

private:
    ReplacedPlace place_;
    WorkFile file_;
};

} // namespace velmora
