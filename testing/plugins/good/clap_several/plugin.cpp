#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr const char* reverb[] = {audioEffectFeature, "reverb", "surround", nullptr};
constexpr const char* organ[] = {"stereo", instrumentFeature, nullptr};
constexpr Descriptor plugins[] = {
    Describe("net.fennel-and-flint.cairn-hall", "Cairn Hall", "Fennel and Flint", "4.0.1", reverb),
    Describe("net.fennel-and-flint.cairn-organ", "Cairn Org\xC3\xA3o \xE2\x98\x82", "Fennel and Flint",
             "4.0.2", organ),
};

} // namespace

/// An effect and an instrument in one file.
ZET_CLAP_ENTRY = ClapLibrary<plugins>::entry;
