// A limited file system: for the length of a scope, system calls of this process are refused. A
// test program that wants this has RefusedCalls.cpp among its sources.
#pragma once

#include <QtGlobal>

namespace velmora::test {

enum class Call {
    RenameToNew, // renameat2()
    Link,        // link()
    LinkHandle,  // linkat() of an open file by its handle
    LinkOpened,  // linkat() of an open file in any way
    OpenNameless,
    OpenToRead, // open() for reading only
    Unlink,
    MakeFolder,
    Lock,   // flock()
    Read,   // read()
    ReadAt, // pread()
    StatFileSystem,
    ReadFolder // getdents64() by syscall(), as FolderScan reads
};

/// Makes a call fail with this error, 0 for none, that many times after the calls that are let
/// pass.
class RefusedCall
{
public:
    static constexpr int kEachTime = -1;

    RefusedCall(Call call, int error, int times = kEachTime, int passed = 0);
    Q_DISABLE_COPY_MOVE(RefusedCall)
    ~RefusedCall();

    /// How many calls were let pass so far.
    [[nodiscard]] int passed() const;

private:
    Call call_;
    int toPass_;
};

} // namespace velmora::test
