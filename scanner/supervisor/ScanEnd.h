#pragma once

#include <stdexcept>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>

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
    PluginFailed(zetaudiofilterhost::PluginLocator failed, const std::string& reason)
        : std::runtime_error(reason), locator(std::move(failed))
    {}
    const zetaudiofilterhost::PluginLocator& Locator() const noexcept { return locator; }

  private:
    zetaudiofilterhost::PluginLocator locator;
};

} // namespace zetaudiofilterscan
