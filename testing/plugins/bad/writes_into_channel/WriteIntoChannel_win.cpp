#include "WriteIntoChannel.h"

#include <windows.h>

namespace zettestplugin {

void WriteIntoChannel(std::string_view bytes)
{
    const std::uint64_t channel = ChannelInCommandLine(::GetCommandLineA());
    DWORD written = 0;
    if (channel != 0 && !::WriteFile(reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(channel)),
                                     bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr))
        ::ExitProcess(1);
}

} // namespace zettestplugin
