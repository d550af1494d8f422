// A file that another program writes and that has no name until it is whole, so that a kill of
// either leaves nothing behind.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <system_error>

namespace velmora {

/// Without finish() nothing of it stays. Where the file system cannot keep a file without a name it
/// stands in its folder under the name of a working file.
class HiddenFile
{
public:
    /// folder: native path of the folder in which the file is to appear.
    explicit HiddenFile(const QString &folder);
    HiddenFile(const HiddenFile &) = delete;
    HiddenFile &operator=(const HiddenFile &) = delete;
    HiddenFile(HiddenFile &&) = delete;
    HiddenFile &operator=(HiddenFile &&) = delete;
    ~HiddenFile();

    /// Why it could not be made.
    [[nodiscard]] std::error_code error() const { return error_; }

    /// The descriptor that a program which is to write the file must inherit.
    [[nodiscard]] int descriptor() const { return fd_ ? fd_->get() : -1; }

    /// The path by which that program opens the file; native.
    [[nodiscard]] QByteArray pathForHeir() const;

    [[nodiscard]] qint64 bytes() const;

    /// Gives the file its path in the folder, instead of a file that stands there. Native bytes.
    [[nodiscard]] std::error_code finish(const QByteArray &target);

private:
    void openNamed();
    [[nodiscard]] std::error_code nameAs(const QByteArray &path) const;

    QByteArray folder_;
    std::unique_ptr<UniqueFd> fd_;
    QByteArray workFile_; // its path while it has one of its own
    std::error_code error_;
};

} // namespace velmora
