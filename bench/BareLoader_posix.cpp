#include "BareLoader.h"

#include <dlfcn.h>

#include "BareQuestions.h"

namespace bench {

int LoadAndAsk(const std::vector<std::string>& paths)
{
    int answered = 0;
    for (const std::string& path : paths) {
        void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!library)
            continue;
        void* entry = ::dlsym(library, "VSTPluginMain");
        if (!entry)
            entry = ::dlsym(library, "main");
        if (entry && AskPlugin(entry))
            ++answered;
    }
    return answered;
}

} // namespace bench
