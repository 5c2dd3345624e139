#pragma once

#include <optional>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/Export.h>
#include <zetaudiopluginhost/ScanOutcome.h>

/// The rules of a scan, whichever process loads the plug-ins and in whatever order. They ask the banned list
/// and the list of unsupported plug-ins. Main thread (in the scanner: its one scanning thread).
namespace zetaudiopluginhost {

/// The sub-component in brackets, as it is shown right behind the module's path; empty without one. UTF-8.
ZETAUDIOPLUGINHOST_API std::string SubcomponentText(const zetaudiofilterhost::PluginLocator& locator);

/// The outcome of a plug-in that a scan passes over: it is on the list of unsupported plug-ins, or banned and
/// not due to be tried again (then there is no record). Empty when it has to be loaded.
ZETAUDIOPLUGINHOST_API std::optional<ScanOutcome>
OutcomeWithoutLoading(const zetaudiofilterhost::PluginLocator& locator);

/// Adds what the loader does not know: records whose ids are unsupported are skipped, and those of a plug-in
/// that was scanned alone say so.
ZETAUDIOPLUGINHOST_API void CompleteOutcome(const zetaudiofilterhost::PluginLocator& locator,
                                            ScanOutcome& outcome);

} // namespace zetaudiopluginhost
