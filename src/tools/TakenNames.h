// The names in a folder, to check whether one of them is taken.
#pragma once

#include <QByteArrayView>

#include <cstddef>
#include <system_error>
#include <unordered_set>

namespace velmora {

/// Names that differ only in case are one name. Only hashes are kept, so that half a million names
/// take a few megabytes; two names with the same hash count as the same, which costs a number.
class TakenNames
{
public:
    /// name: native bytes.
    void add(QByteArrayView name);

    [[nodiscard]] bool holds(QByteArrayView name) const;

    /// Why the folder could not be read to its end; none when these are all names in it.
    [[nodiscard]] std::error_code readError() const { return readError_; }

    void setReadError(std::error_code error) { readError_ = error; }

private:
    std::unordered_set<std::size_t> hashes_;
    std::error_code readError_;
};

} // namespace velmora
