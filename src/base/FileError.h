// A file-system failure to be reported to the user who caused it.
#pragma once

#include <QString>

#include <stdexcept>
#include <system_error>

namespace velmora {

class FileError : public std::runtime_error
{
public:
    /// action: what was tried, as the beginning of a sentence ("The log file cannot be written").
    FileError(const QString &action, std::error_code error)
        : std::runtime_error(
              (action + QStringLiteral(": ") + QString::fromStdString(error.message()))
                  .toStdString())
    {
    }
};

} // namespace velmora
