// A library with one function, for the tests of loading libraries.
#include <QtGlobal>

extern "C" Q_DECL_EXPORT int velmoraTestNumber()
{
    return 42;
}
