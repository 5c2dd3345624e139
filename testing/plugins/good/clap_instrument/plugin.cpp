#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr const char* features[] = {instrumentFeature, "synthesizer", "stereo", nullptr};
constexpr Descriptor plugins[] = {
    Describe("audio.hedgerow.warbler", "Warbler", "Hedgerow Sound", "0.8.11-beta", features)};

} // namespace

ZET_CLAP_ENTRY = ClapLibrary<plugins>::entry;
