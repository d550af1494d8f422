// Sets an environment variable for the length of a scope.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace velmora::test {

class ScopedEnv
{
public:
    /// value: nothing removes the variable from the environment.
    ScopedEnv(const char *name, std::optional<QByteArray> value)
        : name_(name)
    {
        if (qEnvironmentVariableIsSet(name)) {
            before_ = qgetenv(name);
        }
        set(value);
    }

    Q_DISABLE_COPY_MOVE(ScopedEnv)

    ~ScopedEnv() { set(before_); }

private:
    void set(const std::optional<QByteArray> &value)
    {
        if (value) {
            qputenv(name_, *value);
        } else {
            qunsetenv(name_);
        }
    }

    const char *name_;
    std::optional<QByteArray> before_;
};

} // namespace velmora::test
