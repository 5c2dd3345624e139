#include "supervisor/conversation/BannedLists.h"

#include <exception>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/File.h>

#include "TraceCategory.h"

namespace zetaudiofilterscan {

using zetaudiopluginhost::BannedPluginManager;
using zetcore::filesupport::File;

namespace {

void TraceProblem(const std::string& text)
{
    zetcore::debug::TraceLine(1, traceCategory, text);
}

} // namespace

void LoadBannedLists(const std::wstring& bannedPath, const std::wstring& permanentBannedPath)
{
    try {
        // It traces what is wrong with the list. Only the host may move a damaged one aside.
        BannedPluginManager::GetInstance()->LoadConfigurationOfOther(File(bannedPath));
    } catch (const std::exception& error) {
        TraceProblem(error.what());
    }
    const File permanent(permanentBannedPath);
    if (permanent.Exists() && !BannedPluginManager::GetInstance()->LoadStaticConfiguration(permanent))
        TraceProblem(permanent.FullPathUTF8() + " is no list of unsupported plug-ins, or cannot be read");
}

} // namespace zetaudiofilterscan
