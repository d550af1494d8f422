// The rights of an ordinary user, for tests run by root.
#pragma once

#include <QtGlobal>

#include <stdexcept>
#include <unistd.h>

namespace velmora::test {

/// For the length of a scope the process may not do what only root may.
class WithoutRootRights
{
public:
    WithoutRootRights()
        : before_(::geteuid())
    {
        if (before_ == 0 && ::seteuid(kNobody) != 0) {
            throw std::runtime_error("the test cannot take the rights of nobody");
        }
    }

    Q_DISABLE_COPY_MOVE(WithoutRootRights)

    ~WithoutRootRights() { static_cast<void>(::seteuid(before_)); }

private:
    static constexpr uid_t kNobody = 65534;

    uid_t before_;
};

} // namespace velmora::test
