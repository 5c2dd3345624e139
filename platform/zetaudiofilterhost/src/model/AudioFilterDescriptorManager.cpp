#include <zetaudiofilterhost/AudioFilterDescriptorManager.h>

namespace zetaudiofilterhost {

AudioFilterDescriptorManager* AudioFilterDescriptorManager::GetInstance()
{
    static AudioFilterDescriptorManager instance;
    return &instance;
}

} // namespace zetaudiofilterhost
