#include "scan/FormatLoaders.h"

#include <algorithm>
#include <array>

#include "clap/ClapLoader.h"
#include "vst2/Vst2Loader.h"
#include "vst3/Vst3Loader.h"

namespace zetaudiopluginhost {

std::span<const FormatLoader> FormatLoaders()
{
    static const std::array loaders{vst2::Loader(), vst3::Loader(), clap::Loader()};
    return loaders;
}

const FormatLoader* FindFormatLoader(zetaudiofilterhost::TechnologyType type)
{
    const auto loaders = FormatLoaders();
    const auto found = std::ranges::find(loaders, type, &FormatLoader::type);
    return found == loaders.end() ? nullptr : &*found;
}

} // namespace zetaudiopluginhost
