#pragma once

#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

/// What ends the scanner in the middle of an entity.
namespace zetaudiofilterscan {

/// The host is gone.
class ConnectionClosed : public std::runtime_error
{
  public:
    ConnectionClosed() : std::runtime_error("the connection was closed") {}
};

/// A plug-in has failed for good. The message is the reason, for people (UTF-8).
class PluginFailed : public std::runtime_error
{
  public:
    PluginFailed(zetaudiofilterhost::PluginLocator failed, const zetaudiopluginhost::BanInfo& banInfo)
        : std::runtime_error(banInfo.reason), locator(std::move(failed)), ban(banInfo)
    {}
    const zetaudiofilterhost::PluginLocator& Locator() const noexcept { return locator; }
    /// What the host shall ban it with; without the time.
    const zetaudiopluginhost::BanInfo& Ban() const noexcept { return ban; }

  private:
    zetaudiofilterhost::PluginLocator locator;
    zetaudiopluginhost::BanInfo ban;
};

} // namespace zetaudiofilterscan
