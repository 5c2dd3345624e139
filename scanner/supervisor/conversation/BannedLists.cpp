#include "supervisor/conversation/BannedLists.h"

#include <exception>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>

#include "supervisor/process/PrivateFolder.h"

namespace zetaudiofilterscan {

using zetaudiopluginhost::BannedPluginManager;
using zetcore::filesupport::Durability;
using zetcore::filesupport::File;
using zetcore::filesupport::FileUtils;

namespace {

void TraceProblem(const std::string& text)
{
    zetcore::debug::TraceLine(1, "zetaudiofilterscan", text);
}

// Loading a damaged list moves its file aside. Only the host may do that, so this loads a copy.
void LoadBanned(const File& file)
{
    if (!file.Exists())
        return;
    const PrivateFolder folder;
    const File copy(folder.Folder(), file.GetTitle());
    FileUtils::ReplaceContent(copy.FullPath(), FileUtils::ReadFile(file), Durability::Handover);
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    if (!banned.LoadConfiguration(copy))
        TraceProblem("the banned list " + file.FullPathUTF8() +
                     " is damaged: " + banned.GetLoadError()->text);
}

} // namespace

void LoadBannedLists(const std::wstring& bannedPath, const std::wstring& permanentBannedPath)
{
    try {
        LoadBanned(File(bannedPath));
    } catch (const std::exception& error) {
        TraceProblem(error.what());
    }
    const File permanent(permanentBannedPath);
    if (permanent.Exists() && !BannedPluginManager::GetInstance()->LoadStaticConfiguration(permanent))
        TraceProblem(permanent.FullPathUTF8() + " is no list of unsupported plug-ins, or cannot be read");
}

} // namespace zetaudiofilterscan
