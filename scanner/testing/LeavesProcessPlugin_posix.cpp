#include <unistd.h>

// A plug-in that starts a process and leaves it running.
extern "C" __attribute__((visibility("default"))) void* VSTPluginMain(void*)
{
    if (::fork() == 0)
        for (;;)
            ::pause();
    return nullptr;
}
