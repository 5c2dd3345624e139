#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "clap/ClapAbi.h"
#include <zetaudiopluginhost/PluginFailure.h>

namespace zetaudiopluginhost::clap {

/// A copy of a descriptor, because a plug-in may change its texts at any time.
struct ClapPlugin
{
    /// The bytes that the plug-in wrote. An instance is asked for with them.
    std::string id;
    /// The same for showing. No two plug-ins of a library have the same one.
    std::wstring shownId;
    std::wstring name, vendor, version;
    std::vector<std::wstring> features;
};

struct ClapPlugins
{
    std::vector<ClapPlugin> usable;
    /// How many the library claims to have.
    std::size_t claimed = 0;
    /// Why the first of those that are not usable is not, and how many are not.
    std::optional<PluginFailure> problem;
};

/// The factory of a loaded library. Every operation throws `PluginThrew` when the plug-in lets one out.
class ClapFactory
{
  public:
    /// Throws `PluginUnusable` when functions are missing.
    explicit ClapFactory(const PluginFactory& given);

    ClapPlugins Describe() const;
    /// Creates, initialises and destroys one instance. Gives the reason why it cannot be had.
    std::optional<PluginFailure> CreateAndDestroy(const ClapPlugin& plugin) const;

  private:
    const PluginFactory& factory;
};

} // namespace zetaudiopluginhost::clap
