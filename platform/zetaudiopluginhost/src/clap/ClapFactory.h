#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "clap/ClapAbi.h"

namespace zetaudiopluginhost::clap {

/// A copy of a descriptor, because a plug-in may change its texts at any time.
struct ClapPlugin
{
    /// As the plug-in wrote it, for asking for an instance.
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
    /// Why the first of those that are not usable is not; empty when all are.
    std::string problem;
};

/// The factory of a loaded library. Every operation throws `PluginThrew` when the plug-in lets one out.
class ClapFactory
{
  public:
    /// Throws `PluginUnusable` when functions are missing.
    explicit ClapFactory(const PluginFactory& given);

    ClapPlugins Describe() const;
    /// Creates, initialises and destroys one instance. Empty when it worked, else why not.
    std::string TryPlugin(const ClapPlugin& plugin) const;

  private:
    const PluginFactory& factory;
};

} // namespace zetaudiopluginhost::clap
