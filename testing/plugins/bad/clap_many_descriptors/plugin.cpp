#include <algorithm>
#include <array>

#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr std::size_t count = 10000;
constexpr std::string_view beforeNumber = "org.bramble.many.";
constexpr std::size_t digits = 5;
using Id = std::array<char, beforeNumber.size() + digits + 1>;

/// "org.bramble.many.00000" and up.
std::array<Id, count> MakeIds()
{
    std::array<Id, count> ids{};
    for (std::size_t i = 0; i < count; ++i) {
        std::copy(beforeNumber.begin(), beforeNumber.end(), ids[i].begin());
        std::size_t rest = i;
        for (std::size_t digit = digits; digit-- > 0; rest /= 10)
            ids[i][beforeNumber.size() + digit] = static_cast<char>('0' + rest % 10);
    }
    return ids;
}

/// Each plug-in is named by its number.
std::array<Descriptor, count> MakeDescriptors()
{
    static const std::array<Id, count> ids = MakeIds();
    std::array<Descriptor, count> descriptors{};
    std::transform(ids.begin(), ids.end(), descriptors.begin(),
                   [](const Id& id) { return Ordinary(id.data(), id.data() + beforeNumber.size()); });
    return descriptors;
}

const std::array<Descriptor, count> plugins = MakeDescriptors();

} // namespace

ZET_CLAP_ENTRY = ClapLibrary<plugins>::entry;
