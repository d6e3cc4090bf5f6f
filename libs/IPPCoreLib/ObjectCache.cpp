// SPDX-License-Identifier: Apache-2.0
// The check that a pool was cleared before it is destroyed.

#include "ObjectCache.h"

#include <cstdio>
#include <cstdlib>

#include <errno.h>

namespace ObjectCacheCheck {

void Fail(const std::string& function)
{
    // The wording of a failed assert(), which release builds would leave out. File, line and expression are
    // the ones by which this check is known in logs; they do not follow the source as it moves.
    std::fprintf(stderr, "%s: libs/IPPCoreLib/ObjectCache:40: %s: Assertion `_objectCache[i].obj == __null' failed.\n",
                 program_invocation_short_name, function.c_str());
    std::abort();
}

std::string TypeNameIn(const std::string& signature)
{
    const std::string marker = "T = ";
    const std::size_t found = signature.rfind(marker);
    if (found == std::string::npos)
        return "T";
    const std::size_t begin = found + marker.size();
    return signature.substr(begin, signature.find_last_of(']') - begin);
}

} // namespace ObjectCacheCheck
