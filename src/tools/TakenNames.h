// The names of a folder, to ask whether one of them is taken.
#pragma once

#include <QByteArrayView>

#include <cstddef>
#include <unordered_set>

namespace velmora {

/// Names that differ only in case are one name. Only their hashes are kept, so that half a million
/// names cost a few megabytes; two names that share one count as the same, which costs a number.
class TakenNames
{
public:
    /// name: native bytes.
    void add(QByteArrayView name);

    [[nodiscard]] bool holds(QByteArrayView name) const;

private:
    std::unordered_set<std::size_t> hashes_;
};

} // namespace velmora
