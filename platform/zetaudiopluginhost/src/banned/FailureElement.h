#pragma once

#include <pugixml.hpp>
#include <zetaudiopluginhost/PluginFailure.h>

namespace zetaudiopluginhost {

/// The facts of a ban in the files of bans and of reasons, one element for each failure:
///
///     <failure kind="crashed" phase="load" code="11" lastoutput="out of memory"/>
inline constexpr const char* failureElement = "failure";

/// The failures among the children of `plugin`. Empty when one of them cannot be read or is of a kind that
/// only a newer version knows: half of the facts would be wrong.
PluginFailures ReadFailures(const pugi::xml_node& plugin);
/// Replaces the failures among the children of `plugin`.
void WriteFailures(pugi::xml_node& plugin, const PluginFailures& failures);
/// True when the element has nothing but what `ReadFailures` takes in.
bool IsPlainFailure(const pugi::xml_node& element);

/// With texts as they come back from a file: valid UTF-8 without control characters, of a length that people
/// read.
PluginFailures CleanFailures(const PluginFailures& failures);

} // namespace zetaudiopluginhost
