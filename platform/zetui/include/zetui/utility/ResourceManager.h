#pragma once

#include <string>
#include <vector>

#include <zetui/Export.h>

namespace zetui::utility {

/// Resources by name and type, such as the layout archives of dialogs.
class ZETUI_API ResourceManager
{
  public:
    virtual ~ResourceManager();

    /// The resource's bytes, unchanged; empty when there is none of that name and type.
    virtual std::vector<unsigned char> LoadResource(const std::string& name,
                                                    const std::string& type) const = 0;

  protected:
    ResourceManager() = default;
    ResourceManager(const ResourceManager&) = default;
    ResourceManager& operator=(const ResourceManager&) = default;
};

} // namespace zetui::utility
