// The text of a file-system failure as shown to the user.
#include "base/FileError.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(FileError, SaysWhatWasTriedAndWhyItFailed)
{
    const std::error_code error = std::make_error_code(std::errc::no_space_on_device);
    const FileError failure(QStringLiteral("The log file cannot be written"), error);
    EXPECT_EQ(std::string(failure.what()), "The log file cannot be written: " + error.message());
}

TEST(FileError, KeepsCharactersBeyondAscii)
{
    const FileError failure(QStringLiteral("d\u00e9p\u00f4t"),
                            std::make_error_code(std::errc::io_error));
    EXPECT_TRUE(QString::fromUtf8(failure.what()).startsWith(QStringLiteral("d\u00e9p\u00f4t: ")));
}

} // namespace
} // namespace velmora
