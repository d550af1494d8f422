// A file system that cannot do everything: for the length of a scope system calls of this process
// are refused.
#pragma once

namespace velmora::test {

/// renameat2() fails with this error, 0 for not at all.
class RefusedRename
{
public:
    explicit RefusedRename(int error);
    RefusedRename(const RefusedRename &) = delete;
    RefusedRename &operator=(const RefusedRename &) = delete;
    RefusedRename(RefusedRename &&) = delete;
    RefusedRename &operator=(RefusedRename &&) = delete;
    ~RefusedRename();
};

/// The first unlink() fails with this error.
class RefusedUnlink
{
public:
    explicit RefusedUnlink(int error);
    RefusedUnlink(const RefusedUnlink &) = delete;
    RefusedUnlink &operator=(const RefusedUnlink &) = delete;
    RefusedUnlink(RefusedUnlink &&) = delete;
    RefusedUnlink &operator=(RefusedUnlink &&) = delete;
    ~RefusedUnlink();
};

} // namespace velmora::test
