#include "session/WindowStore.h"

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

std::string WindowStore::Read(const std::string& key) const
{
    for (const ControlValues* const some : {&written, &values}) {
        if (const auto found = some->find(key); found != some->end())
            return found->second;
    }
    return {};
}

void WindowStore::Write(const std::string& key, const std::string& value)
{
    written[key] = value;
}

void WindowStore::OnUnusable(const std::string& key, const std::string& value)
{
    Say(WindowSettingsFile().FullPathUTF8() + ", control " + key + ": \"" + value +
        "\" cannot be used, and the window opens without it");
}

} // namespace zetaudiopluginmanager
