#include "BareLoader.h"

#include <windows.h>

#include "BareQuestions.h"

namespace bench {

int LoadAndAsk(const std::vector<std::string>& paths)
{
    int answered = 0;
    for (const std::string& path : paths) {
        const HMODULE library = ::LoadLibraryA(path.c_str());
        if (!library)
            continue;
        FARPROC entry = ::GetProcAddress(library, "VSTPluginMain");
        if (!entry)
            entry = ::GetProcAddress(library, "main");
        if (entry && AskPlugin(reinterpret_cast<void*>(entry)))
            ++answered;
    }
    return answered;
}

} // namespace bench
