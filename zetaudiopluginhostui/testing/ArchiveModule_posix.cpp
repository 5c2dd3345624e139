#include "testing/ArchiveModule.h"

#include <stdexcept>

#include <dlfcn.h>

#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhostui {

struct ArchiveModule::State
{
    std::unique_ptr<void, int (*)(void*)> module{nullptr, &::dlclose};
    void* table = nullptr;
};

ArchiveModule::ArchiveModule(const std::string& archive) : state(std::make_unique<State>())
{
    const auto bin = zetcore::filesupport::commondirs::ExecutableDir().FullPath();
    const std::string path =
        zetcore::string::UTF16to8(bin) + "/libzettestarchive" + archive + ZET_TEST_MODULE_SUFFIX;
    state->module.reset(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
    state->table = state->module ? ::dlsym(state->module.get(), "zetModuleResources") : nullptr;
    if (!state->table)
        throw std::runtime_error("no such module: " + path);
}

ArchiveModule::~ArchiveModule() = default;

zetui::utility::ModuleHandle ArchiveModule::Handle() const
{
    return state->table;
}

} // namespace zetaudiopluginhostui
