// main() of the test programs that need no window: an application object, so that the event loop
// works, and an environment in which no request goes through a proxy.
#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    for (const char *const name :
         {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}) {
        qunsetenv(name);
    }
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
