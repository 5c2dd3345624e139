#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiopluginhost {

/// One `plugin` element.
struct BanEntry
{
    zetaudiofilterhost::PluginLocator locator;
    BanInfo info;
    /// The element as it was read, when it holds something that this version does not know.
    std::shared_ptr<const pugi::xml_document> original;
};

/// A file of banned plug-ins or of reasons:
///
///     <?xml version="1.0" encoding="UTF-8"?>
///     <bannedplugins version="1.0">
///         <plugin locator="VST|/usr/lib/vst/Bad.so|" reason="why" time="1700000000"
///                 filesize="4096" filetime="1690000000000000000" couldnotload="true">
///             <failure kind="couldnotload" phase="load" detail="why"/>
///         </plugin>
///     </bannedplugins>
struct BanListFile
{
    std::vector<BanEntry> entries;
    /// The root element as it was read, without the entries: what a newer version has put there.
    std::shared_ptr<const pugi::xml_document> rest;
};

/// Throws `std::runtime_error` ("line 3: why") for a text that is no such file.
BanListFile ParseBanList(std::string_view text, const char* rootName);
std::string WriteBanList(const BanListFile& file, const char* rootName);

/// The line, counted from 1, in which the byte at `offset` stands.
std::size_t LineOfOffset(std::string_view text, std::size_t offset);

/// Takes facts and words over as they come back from a file. Facts come before other words.
BanInfo CleanBan(const BanInfo& info);

/// Valid UTF-8 without control characters other than line ends and tabs, of a length that people read.
std::string CleanReason(std::string_view reason);

} // namespace zetaudiopluginhost
