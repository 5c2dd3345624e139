#include "ClapPlugin.h"

using namespace zettestplugin;

namespace {

constexpr const char* features[] = {audioEffectFeature, "delay", "stereo", nullptr};
constexpr Descriptor plugins[] = {
    Describe("audio.marrowlane.reed-delay", "Reed Delay", "Marrow Lane Audio", "1.2.0", features)};

} // namespace

ZET_CLAP_ENTRY = ClapLibrary<plugins>::entry;
