// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_library.h"

#include <alsa/asoundlib.h>
#include <dlfcn.h>

namespace wrenfold {
namespace {

template<typename Function>
bool find(void *library, const char *name, Function &function)
{
    function = library ? reinterpret_cast<Function>(dlsym(library, name)) : nullptr;
    return function != nullptr;
}

void ignore(const char * /*file*/, int /*line*/, const char * /*function*/, int /*error*/,
            const char * /*format*/, ...)
{
}

/// The library under libcanberra, which else writes many lines to standard error where there is no device.
void keepAlsaQuiet()
{
    decltype(&snd_lib_error_set_handler) setErrorHandler = nullptr;
    if (find(dlopen("libasound.so.2", RTLD_NOW), "snd_lib_error_set_handler", setErrorHandler))
        setErrorHandler(ignore);
}

bool load(CanberraLibrary &calls)
{
    void *library = dlopen("libcanberra.so.0", RTLD_NOW);
    return find(library, "ca_context_create", calls.createContext) &&
           find(library, "ca_context_destroy", calls.destroyContext) &&
           find(library, "ca_context_change_props", calls.changeProperties) &&
           find(library, "ca_context_play_full", calls.playFull) &&
           find(library, "ca_proplist_create", calls.createProperties) &&
           find(library, "ca_proplist_destroy", calls.destroyProperties) &&
           find(library, "ca_proplist_sets", calls.setProperty);
}

} // namespace

const CanberraLibrary *CanberraLibrary::loaded()
{
    static CanberraLibrary calls;
    static const bool isLoaded = [] {
        keepAlsaQuiet();
        return load(calls);
    }();
    return isLoaded ? &calls : nullptr;
}

} // namespace wrenfold
