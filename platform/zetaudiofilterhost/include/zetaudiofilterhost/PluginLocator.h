#pragma once

#include <compare>
#include <string>

#include <zetaudiofilterhost/Export.h>

namespace zetaudiofilterhost {

/// The codes that hosts know the technologies by. `PluginFormats` says everything else about them.
enum class TechnologyType : int
{
    Unknown = 0,
    VST = 2,
    VST3 = 3,
    AU = 4,
    CLAP = 5,
};

/// The name that files hold and users see. It is empty for a technology that is not among `PluginFormats`.
ZETAUDIOFILTERHOST_API std::wstring TechnologyName(TechnologyType type);

/// Identifies one plug-in: its technology, its module's path, and, inside a module with several, its
/// sub-component. A value; an empty locator has an empty path. Ordered by path, then technology, then
/// sub-component.
///
/// Text form, one line: technology name, path and sub-component, separated by '|'. In the last two, '%', '|',
/// control characters and units that are not valid Unicode are written as '%' and hexadecimal digits, so that
/// every path comes back exactly ("%25"; "%uDCFF" for a stray unit).
class ZETAUDIOFILTERHOST_API PluginLocator
{
  public:
    PluginLocator() = default;
    PluginLocator(TechnologyType technology, std::wstring path, std::wstring subcomponent = {});

    TechnologyType GetTechnologyType() const noexcept { return technology; }
    const std::wstring& GetPath() const noexcept { return path; }
    const std::wstring& GetSubcomponent() const noexcept { return subcomponent; }
    bool IsEmpty() const noexcept { return path.empty(); }
    /// True when it has a path and a technology that is among `PluginFormats`. Others have no text form.
    bool IsValid() const;
    /// The locator of the whole module: the same without the sub-component.
    PluginLocator ModuleLocator() const;

    /// Empty for one that is not valid.
    std::wstring ToString() const;
    /// An empty locator for a text that is not of the form above.
    static PluginLocator FromString(const std::wstring& text);

    friend bool operator==(const PluginLocator&, const PluginLocator&) = default;
    friend ZETAUDIOFILTERHOST_API std::strong_ordering operator<=>(const PluginLocator&,
                                                                   const PluginLocator&);

  private:
    TechnologyType technology = TechnologyType::Unknown;
    std::wstring path;
    std::wstring subcomponent;
};

} // namespace zetaudiofilterhost
