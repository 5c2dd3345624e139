#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <zetui/Export.h>
#include <zetui/utility/ResourceManager.h>

namespace zetui::utility {

/// A loaded module (HMODULE on Windows, its load address elsewhere). Holds no reference on the module.
using ModuleHandle = void*;

/// One entry of the table that a shared object exports as `zetModuleResources` where the system has no
/// resources of its own. An entry without name ends the table.
struct EmbeddedResource
{
    const char* name;
    const char* type;
    const unsigned char* bytes;
    std::size_t size;
};

/// The resources of one module, by name and type. Any thread.
class ZETUI_API OS_ResourceManager : public ResourceManager
{
  public:
    explicit OS_ResourceManager(ModuleHandle module);
    ~OS_ResourceManager() override;

    ModuleHandle Module() const noexcept { return module; }
    std::vector<unsigned char> LoadResource(const std::string& name, const std::string& type) const override;

  private:
    ModuleHandle module;
};

} // namespace zetui::utility
