// A module that carries resources.
#include <zetui/utility/OS_ResourceManager.h>

namespace {

constexpr unsigned char listBytes[] = {'<', 'l', 'i', 's', 't', '/', '>', '\r', '\n'};
constexpr unsigned char layoutBytes[] = {0, 1, 2, 255};

} // namespace

extern "C" {

__attribute__((visibility("default"))) extern const zetui::utility::EmbeddedResource zetModuleResources[];
const zetui::utility::EmbeddedResource zetModuleResources[] = {
    {"PlugInList", "xml", listBytes, sizeof listBytes},
    {"PlugInList", "layout", layoutBytes, sizeof layoutBytes},
    {nullptr, nullptr, nullptr, 0},
};

__attribute__((visibility("default"))) void AddressInResources() {}
}
