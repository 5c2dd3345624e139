#include <zetcore/utility/ClientName.h>

#include <mutex>

#include "utility/Immortal.h"

namespace zetcore::utility {

namespace {

struct ClientNameState
{
    std::mutex mutex;
    std::wstring name = L"zetaudiopluginmanager";
};

} // namespace

std::wstring GetClientName()
{
    auto& state = utility::Immortal<ClientNameState>();
    const std::lock_guard lock(state.mutex);
    return state.name;
}

void SetClientName(const std::wstring& name)
{
    auto& state = utility::Immortal<ClientNameState>();
    const std::lock_guard lock(state.mutex);
    state.name = name;
}

} // namespace zetcore::utility
