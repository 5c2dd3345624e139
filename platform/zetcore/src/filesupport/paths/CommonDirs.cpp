#include <zetcore/filesupport/paths/CommonDirs.h>

#include <mutex>

#include "filesupport/paths/PlatformFolders.h"
#include "utility/Immortal.h"

namespace zetcore::filesupport::commondirs {

namespace {

struct ChosenExecutableDir
{
    std::mutex mutex;
    std::wstring path;
};

} // namespace

Dir ExecutableDir()
{
    {
        auto& state = utility::Immortal<ChosenExecutableDir>();
        const std::lock_guard lock(state.mutex);
        if (!state.path.empty())
            return Dir(state.path);
    }
    return Dir(FindExecutableFolder());
}

void SetExecutableDir(const std::wstring& path)
{
    std::wstring absolute = Dir(path).FullPath();
    auto& state = utility::Immortal<ChosenExecutableDir>();
    const std::lock_guard lock(state.mutex);
    state.path = std::move(absolute);
}

bool IsExecutableDirSet()
{
    auto& state = utility::Immortal<ChosenExecutableDir>();
    const std::lock_guard lock(state.mutex);
    return !state.path.empty();
}

Dir HomeDir()
{
    return Dir(FindHomeFolder());
}

Dir RuntimeDir()
{
    return Dir(FindRuntimeFolder());
}

} // namespace zetcore::filesupport::commondirs
