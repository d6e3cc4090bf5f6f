// SPDX-License-Identifier: Apache-2.0
// The end of the process when a thread primitive fails or is misused.

#include "fatal.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace pt {

namespace {

void print_fatal(int code, const char* message)
{
    std::fprintf(stderr, "\nInternal [%04x]: %s\n", static_cast<unsigned>(code), message);
}

std::atomic<fatal_handler> installed_handler{&print_fatal};

} // namespace

fatal_handler set_fatal_handler(fatal_handler handler)
{
    return installed_handler.exchange(handler);
}

void fatal(int code, const char* message)
{
    if (const fatal_handler handler = installed_handler.load())
        handler(code, message);
    std::exit(code); // NOLINT(concurrency-mt-unsafe): whatever else runs, the process is to end
}

} // namespace pt
