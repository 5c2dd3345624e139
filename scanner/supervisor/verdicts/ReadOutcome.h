#pragma once

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "WorkerMessages.h"

namespace zetaudiofilterscan {

/// The outcome in a worker's answer. Throws `std::runtime_error` that says what is wrong with it: records
/// that are no configuration, or that are not this module's.
zetaudiopluginhost::ScanOutcome ReadOutcome(const EntityAnswer& answer,
                                            const zetaudiofilterhost::PluginLocator& locator);

} // namespace zetaudiofilterscan
