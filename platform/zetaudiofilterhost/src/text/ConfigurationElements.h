#pragma once

#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "text/ConfigurationText.h"

/// Between one XML element and one value of a configuration.
namespace zetaudiofilterhost {

/// A value cannot be read: damage, or (in a newer version's text) an element that is kept but passed over.
struct UnreadableElement
{
    std::string what;
};

/// In quotes, and not too long for a message.
std::string Quoted(std::string_view value);

/// They throw `UnreadableElement`.
PluginLocator ReadLocator(const pugi::xml_node& element);
PluginFolder ReadFolder(const pugi::xml_node& element);
InfoPtr ReadModule(const pugi::xml_node& element);
RegistryChange ReadChoice(const pugi::xml_node& element);

void AppendUnknown(Unknown& unknown, const pugi::xml_attribute& attribute);
/// The node as it would be written again.
void AppendRaw(std::string& children, const pugi::xml_node& node);

} // namespace zetaudiofilterhost
