#pragma once

#include <atomic>

#include <zetaudiofilterhost/Export.h>

namespace zetaudiofilterhost {

/// The kinds of audio filters that the host offers. Any thread.
class ZETAUDIOFILTERHOST_API AudioFilterDescriptorManager
{
  public:
    static AudioFilterDescriptorManager* GetInstance();

    /// True (the default) when the host offers instruments.
    bool AreSynthsEnabled() const noexcept { return synthsEnabled; }
    void SetSynthsEnabled(bool enabled) noexcept { synthsEnabled = enabled; }

  private:
    std::atomic<bool> synthsEnabled{true};
};

} // namespace zetaudiofilterhost
