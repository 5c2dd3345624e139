#include "testing/ArchiveModule.h"

#include <stdexcept>

#include <windows.h>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginhostui {

struct ArchiveModule::State
{
    HMODULE module;
    ~State() { ::FreeLibrary(module); }
};

ArchiveModule::ArchiveModule(const std::string& archive)
{
    const std::string name = "libzettestarchive" + archive + ZET_TEST_MODULE_SUFFIX;
    const HMODULE module = ::LoadLibraryW(zetcore::string::UTF8to16(name).c_str());
    if (!module)
        throw std::runtime_error("no such module: " + name);
    state.reset(new State{module});
}

ArchiveModule::~ArchiveModule() = default;

zetui::utility::ModuleHandle ArchiveModule::Handle() const
{
    return state->module;
}

} // namespace zetaudiopluginhostui
