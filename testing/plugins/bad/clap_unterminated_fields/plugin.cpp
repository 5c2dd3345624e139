#include <array>

#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

/// This is more than anybody should read.
template<char filler>
constexpr std::array<char, 65536> endless = [] {
    std::array<char, 65536> text{};
    text.fill(filler);
    return text;
}();

constexpr auto manyFeatures = [] {
    std::array<const char*, 4096> features{};
    features.fill(endless<'f'>.data());
    features[0] = instrumentFeature;
    features[1] = "caf\xE9";
    return features;
}();

constexpr Descriptor plugins[] = {Describe(endless<'I'>.data(), endless<'N'>.data(), "M\xFCller \xE2\x82",
                                           endless<'1'>.data(), manyFeatures.data())};
using Library = ClapLibrary<plugins>;

const Plugin* Create(const PluginFactory*, const Host* host, const char* id)
{
    const std::string_view wanted(id);
    const bool isStart = !wanted.empty() && wanted.find_first_not_of('I') == std::string_view::npos;
    return isStart ? (new ClapInstance(plugins[0], host))->Interface() : nullptr;
}

constexpr PluginFactory factory{&Library::Count, &Library::Get, &Create};

const void* GetFactory(const char*)
{
    return &factory;
}

} // namespace

ZET_CLAP_ENTRY{interfaceVersion, &Library::Init, &Library::Deinit, &GetFactory};
