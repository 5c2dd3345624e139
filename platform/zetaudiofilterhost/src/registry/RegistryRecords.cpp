// Records read without a registry that others know.
#include "registry/RegistryState.h"

#include <zetcore/filesupport/content/FileUtils.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::File;
using zetcore::filesupport::FileUtils;

std::vector<PluginModuleInfoManager::InfoPtr>
PluginModuleInfoManager::RecordsInFile(const File& file, const std::vector<TechnologyType>& technologies)
{
    std::vector<InfoPtr> infos;
    if (technologies.empty() || !file.Exists())
        return infos;
    const std::string text = FileUtils::ReadFile(file);
    Configuration configuration = ReadConfiguration(text, file.FullPathUTF8(), technologies);
    // The state knows what a later element says of an earlier one.
    State content;
    content.ReplaceRecords(configuration, State::ReadJournal(file, text, technologies));
    infos.reserve(content.records.size());
    for (const auto& [locator, record] : content.records)
        infos.push_back(record.info);
    return infos;
}

} // namespace zetaudiofilterhost
