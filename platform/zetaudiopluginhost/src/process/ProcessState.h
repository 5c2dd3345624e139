#pragma once

#include <memory>

namespace zetaudiopluginhost {

/// Remembers what plug-ins are known to change for the whole process: current folder, locale, terminate
/// handler, floating-point mode, and where the system has them, signal handlers and the mask for new files.
class ProcessState
{
  public:
    /// Remembers the present state.
    ProcessState();
    ~ProcessState();
    ProcessState(const ProcessState&) = delete;
    ProcessState& operator=(const ProcessState&) = delete;

    /// Puts back what has changed. Before a module's code is unloaded, because handlers may lie in it.
    void Restore() const;

  private:
    struct Saved;
    std::unique_ptr<Saved> saved;
};

} // namespace zetaudiopluginhost
