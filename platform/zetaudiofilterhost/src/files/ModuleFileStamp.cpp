#include <zetaudiofilterhost/ModuleFileStamp.h>

#include <algorithm>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetcore/filesupport/paths/FileFacts.h>

namespace zetaudiofilterhost {

namespace {

ModuleFileStamp StampOf(const zetcore::filesupport::File& file)
{
    const auto facts = FindFileFacts(file).value_or(zetcore::filesupport::FileFacts());
    return {facts.size, facts.modificationTime};
}

} // namespace

ModuleFileStamp GetModuleFileStamp(const PluginLocator& locator)
{
    if (locator.IsEmpty())
        return {};
    const ModuleFiles files = FindModuleFiles(locator);
    ModuleFileStamp stamp;
    if (const auto* library = std::get_if<std::wstring>(&files.library))
        stamp = StampOf(zetcore::filesupport::File(*library));
    if (files.description) {
        const ModuleFileStamp description = StampOf(*files.description);
        stamp.size += description.size;
        stamp.time = std::max(stamp.time, description.time);
    }
    return stamp;
}

} // namespace zetaudiofilterhost
