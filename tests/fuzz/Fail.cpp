#include "Fuzz.h"

#include <cstdio>
#include <cstdlib>

void fuzz::Fail(const char *promise, const char *file, int line)
{
    std::fprintf(stderr, "%s:%d: broken: %s\n", file, line, promise);
    std::abort();
}
