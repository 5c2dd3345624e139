#include <array>

#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr std::array<Descriptor, 0> plugins{};

} // namespace

ZET_CLAP_ENTRY = ClapLibrary<plugins>::entry;
