#pragma once

#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiofilterscan {

/// A plug-in has failed for good, which ends the scanner. The message is the reason, for people (UTF-8).
class PluginFailed : public std::runtime_error
{
  public:
    PluginFailed(zetaudiofilterhost::PluginLocator failed, const zetaudiopluginhost::BanInfo& banInfo)
        : std::runtime_error(banInfo.reason), locator(std::move(failed)), ban(banInfo)
    {}
    const zetaudiofilterhost::PluginLocator& Locator() const noexcept { return locator; }
    /// The host bans the plug-in with this. The time is not set.
    const zetaudiopluginhost::BanInfo& Ban() const noexcept { return ban; }

  private:
    zetaudiofilterhost::PluginLocator locator;
    zetaudiopluginhost::BanInfo ban;
};

} // namespace zetaudiofilterscan
