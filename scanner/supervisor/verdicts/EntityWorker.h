#pragma once

#include <memory>
#include <stdexcept>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

#include "supervisor/verdicts/EntityScanner.h"
#include "supervisor/workers/WorkerProcess.h"

namespace zetaudiofilterscan {

/// The scanner cannot say anything of a plug-in: the system starts no more processes to load it in, for
/// example.
class NoVerdict : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// A worker and what it has been through.
struct EntityScanner::Worker
{
    std::unique_ptr<WorkerProcess> process;
    bool hasSettings = false;
    bool hasKnownModules = false;
    /// In order; what a failure may have to do with.
    std::vector<zetaudiofilterhost::PluginLocator> loaded;
};

} // namespace zetaudiofilterscan
