// A disk whose room the test sets: for the length of a scope, each disk of this process says that
// it has it. A test program that wants this has DiskDouble.cpp among its sources.
#pragma once

#include <QtGlobal>

#include <functional>
#include <utility>

namespace velmora::test {

class DiskDouble
{
public:
    /// Bytes free, asked each time anew.
    using Free = std::function<qint64()>;

    DiskDouble(qint64 allBytes, Free free);
    Q_DISABLE_COPY_MOVE(DiskDouble)
    ~DiskDouble();
};

} // namespace velmora::test
