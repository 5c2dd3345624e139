#include "clap/ClapText.h"

#include <algorithm>
#include <cstring>

#include "formats/PluginText.h"

namespace zetaudiopluginhost::clap {

namespace {

/// Bytes: the longest text that a list shows, in UTF-8. Without an end, a text must not be read much further:
/// nobody knows where the plug-in's memory ends.
constexpr std::size_t maxTextSize = 1024;
/// Several times what a plug-in has.
constexpr std::size_t maxFeatures = 64;
/// Characters: more than any list shows of them.
constexpr std::size_t maxCategoryLength = 255;

} // namespace

std::string_view Bytes(const char* text)
{
    if (text == nullptr)
        return {};
    const void* end = std::memchr(text, 0, maxTextSize);
    return {text,
            end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : maxTextSize};
}

std::wstring Text(const char* text)
{
    return PluginText(Bytes(text));
}

std::vector<std::wstring> Features(const char* const* features)
{
    std::vector<std::wstring> texts;
    for (std::size_t i = 0; features != nullptr && i < maxFeatures && features[i] != nullptr; ++i)
        texts.push_back(Text(features[i]));
    return texts;
}

std::wstring CategoryText(const std::vector<std::wstring>& features)
{
    std::wstring joined;
    for (auto feature = features.begin(); feature != features.end(); ++feature) {
        const bool isNew = std::find(features.begin(), feature, *feature) == feature;
        if (isNew && !feature->empty() && joined.size() + feature->size() < maxCategoryLength)
            joined += (joined.empty() ? L"" : L"|") + *feature;
    }
    return joined;
}

bool IsKnown(const Version& version)
{
    return version.major == interfaceVersion.major;
}

std::string VersionText(const Version& version)
{
    return std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
           std::to_string(version.revision);
}

} // namespace zetaudiopluginhost::clap
