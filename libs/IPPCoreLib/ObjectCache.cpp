// SPDX-License-Identifier: Apache-2.0
// The check that a pool was cleared before it is destroyed.

#include "ObjectCache.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

void failObjectCacheCheck(const char* function)
{
    // The wording of a failed assert(), which release builds would leave out. File, line and expression are
    // the ones by which this check is known in logs; they do not follow the source as it moves.
    std::fprintf(stderr, "%s: libs/IPPCoreLib/ObjectCache:40: %s: Assertion `_objectCache[i].obj == __null' failed.\n",
                 program_invocation_short_name, function);
    std::abort();
}
