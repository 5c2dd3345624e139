#include <zetaudiopluginhostui/Module.h>

#include <memory>
#include <string>

#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/NullPtrException.h>

#include "module/ModuleHandle.h"
#include "module/ModuleResources.h"

namespace zetaudiopluginhostui {

namespace {

struct ModuleState
{
    bool initialised = false;
    std::unique_ptr<zetui::utility::OS_ResourceManager> resources;
};

ModuleState& State()
{
    static ModuleState state;
    return state;
}

} // namespace

bool Initialize()
{
    zetcore::threads::AssertMainThread();
    ModuleState& state = State();
    if (state.initialised)
        return true;
    state.resources = std::make_unique<zetui::utility::OS_ResourceManager>(OwnModuleHandle());
    state.initialised = true;
    return true;
}

void Terminate()
{
    zetcore::threads::AssertMainThread();
    ModuleState& state = State();
    if (!state.initialised)
        return;
    state.resources.reset();
    state.initialised = false;
}

zetui::utility::OS_ResourceManager* GetModuleResources()
{
    zetcore::threads::AssertMainThread();
    return State().resources.get();
}

zetui::utility::OS_ResourceManager* RequireModuleResources(const char* operation)
{
    auto* const resources = GetModuleResources();
    if (!resources)
        throw zetcore::utility::null_ptr_exception(std::string("OS_ResourceManager (") + operation +
                                                   ": call zetaudiopluginhostui::Initialize() first)");
    return resources;
}

} // namespace zetaudiopluginhostui
