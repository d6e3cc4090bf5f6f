// SPDX-License-Identifier: Apache-2.0
// Reaches the module that plays recordings.

#include "PlaybackLibrary.h"

#include "playback/PlaybackModule.h"

#include <dlfcn.h>

namespace simulator {

namespace {

/// The path of a file beside this library; just its name where the system does not tell.
std::string besideThisLibrary(const std::string& fileName)
{
    static const char anAddressInHere = 0;
    Dl_info info = {};
    if (dladdr(&anAddressInHere, &info) == 0 || info.dli_fname == nullptr)
        return fileName;
    const std::string path = info.dli_fname;
    const std::string::size_type slash = path.rfind('/');
    return slash == std::string::npos ? fileName : path.substr(0, slash + 1) + fileName;
}

} // namespace

SourceResult makePlaybackSource(const std::string& path)
{
    const std::string module = besideThisLibrary(playbackModuleFile);
    void* const library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return {nullptr, std::string("cannot load the playback module: ") + dlerror()};
    const auto make = reinterpret_cast<PlaybackEntry>(dlsym(library, playbackEntryName));
    if (make == nullptr) {
        dlclose(library);
        return {nullptr, module + " is not the playback module of this library"};
    }
    // Never unloaded from here on: the source that it makes runs in it.
    SourceResult result;
    result.source.reset(make(path.c_str(), &result.error));
    // cppcheck-suppress resourceLeak ; see above
    return result;
}

} // namespace simulator
